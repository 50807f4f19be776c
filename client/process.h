// Other processes as messages name them, and whether they still run.
#ifndef CLIENT_PROCESS_H
#define CLIENT_PROCESS_H

#include <string>
#include <sys/types.h>

namespace client
{

// "process 123 (cmifctl)"; "a process of another PID namespace" for 0.
std::string process_name(pid_t process);

bool process_exists(pid_t process);

// Stopped by a signal or a debugger: it does nothing until it is continued.
bool process_is_stopped(pid_t process);

// The process of a thread, which the kernel may name as the last reader of a queue.
pid_t process_of(pid_t thread);

// Seconds since the system booted at which the process started; negative when it doesn't exist.
double start_time(pid_t process);
double boot_time_now();

// "0.5 s"
std::string seconds_text(double seconds);

} // namespace client

#endif
