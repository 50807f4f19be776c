// Signals that end the tool, held back while something has to be tidied up first.
#ifndef CLIENT_SIGNALS_H
#define CLIENT_SIGNALS_H

#include "file.h"

#include <csignal>

namespace cmifctl
{

// SIGINT, SIGTERM and SIGHUP are readable here instead of ending the process.
class HeldSignals
{
public:
    HeldSignals();
    ~HeldSignals();
    HeldSignals(const HeldSignals &) = delete;
    HeldSignals &operator=(const HeldSignals &) = delete;

    int descriptor() const { return file_.number(); }
    // The number of the signal that came.
    int taken() const;

private:
    File file_;
    sigset_t before_{};
};

// For a child: those signals end it again.
void release_signals();

} // namespace cmifctl

#endif
