// A call that may never return, in a child process. Create it before any thread.
//
//     Child child([] { shared_CMIF_set_timezone(); });
//     queues.wait_for_request();
//     EXPECT_TRUE(child.still_runs());
#ifndef TESTS_SUPPORT_CHILD_H
#define TESTS_SUPPORT_CHILD_H

#include "redirect.h"

#include <functional>
#include <string>
#include <unistd.h>

class Child
{
public:
    explicit Child(const std::function<void()> &body);
    ~Child(); // kills the process if it still runs
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    // Whether it still runs after 100 ms.
    [[nodiscard]] bool still_runs() const;

    // Waits until it ends. Its exit status, 0 if `body` returned, or 128 + N if signal N ended it.
    int wait();

    void signal(int number) const;
    [[nodiscard]] pid_t process() const { return process_; }

    // Its standard output so far.
    [[nodiscard]] std::string output() const { return output_.bytes(); }

private:
    Redirect output_{STDOUT_FILENO};
    pid_t process_;
};

#endif
