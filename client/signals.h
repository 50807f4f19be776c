// The signals that end the program, held back while something has to be cleaned up first.
#ifndef CLIENT_SIGNALS_H
#define CLIENT_SIGNALS_H

#include "file.h"

#include <csignal>

namespace client
{

// While one exists, SIGINT, SIGTERM and SIGHUP can be read from fd() and don't end the process.
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

private:
    File file_;
    sigset_t before_{};
};

// For a child process: these signals end it again.
void unblock_held_signals();

} // namespace client

#endif
