// The signals that end the program, held back while something has to be cleaned up first.
#ifndef CLIENT_SIGNALS_H
#define CLIENT_SIGNALS_H

#include "file.h"

#include <csignal>

namespace client
{

// While one exists, the signals that would end the process (SIGINT, SIGTERM, SIGUSR1 and the like)
// can be read from fd() and don't.
class HeldSignals
{
public:
    HeldSignals();
    ~HeldSignals();
    HeldSignals(const HeldSignals &) = delete;
    HeldSignals &operator=(const HeldSignals &) = delete;

    int fd() const { return file_.fd(); }
    // The number of a signal that has arrived.
    int received() const;
    // Throws Interrupted if one has.
    void check() const;

private:
    File file_;
    sigset_t before_{};
};

// For a child process: these signals end it again.
void unblock_held_signals();

// No core dump of this process and its children is ever written: it could hold a PIN.
void forbid_core_dumps();

} // namespace client

#endif
