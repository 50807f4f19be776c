// How the process of a call ends when it is told to before it has finished.
#ifndef CLIENT_CALL_END_H
#define CLIENT_CALL_END_H

namespace client
{

// From now on SIGTERM ends this process with all that it has started, and removes `marker`, a file
// that exists while the call runs; null for none. Its process group must be its own.
void end_on_sigterm(const char *marker);

// While one exists, a record passes between this process and a queue, and SIGTERM waits: the kernel
// may hand over a reply long before the process runs again and counts it.
class Exchange
{
public:
    Exchange();
    ~Exchange();
    Exchange(const Exchange &) = delete;
    Exchange &operator=(const Exchange &) = delete;
};

} // namespace client

#endif
