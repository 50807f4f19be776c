// A forked process that runs one call and sends back what came of it.
#ifndef CLIENT_CHILD_H
#define CLIENT_CHILD_H

#include "call.h"
#include "file.h"

#include <sys/types.h>

namespace cmifctl
{

class Child
{
public:
    // With `trace` the library's lines arrive at lines(); without it they are dropped.
    Child(const Call &call, bool trace);
    ~Child();
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    int answer() const { return answer_.number(); }
    int lines() const { return lines_.number(); } // -1 without trace

    // How it ended, as waitpid() tells.
    int wait();
    void kill();

private:
    pid_t pid_ = -1;
    File answer_;
    File lines_;
};

// What the child sent; fails when it ended before it could.
Answer decoded(const std::string &bytes, int wait_status, const Call &call);

} // namespace cmifctl

#endif
