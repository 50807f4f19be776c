// The mark of a run without namespaces: a killed run leaves it, so that the next one cleans up.
#ifndef SANDBOX_RUN_MARK_H
#define SANDBOX_RUN_MARK_H

namespace sandbox
{

// A file in /tmp as long as this object exists; one per user. It also tells whether
// the run creates /data.
class RunMark
{
public:
    RunMark();
    ~RunMark();
    RunMark(const RunMark &) = delete;
    RunMark &operator=(const RunMark &) = delete;
};

// To be called with the run's lock held. If the mark of a killed run of this user is there, removes
// what that run left and prints a line; but not while a router serves the queues.
void clean_up_after_killed_run();

} // namespace sandbox

#endif
