// A call that may never return, in a process of its own. Start it before any thread.
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
    ~Child(); // ends the process if it still runs
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    // Whether it still runs in a moment.
    [[nodiscard]] bool still_runs() const;

    // Waits for its end: its exit status, or 128 and the signal. 0 when `body` returned.
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
