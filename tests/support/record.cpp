#include "record.h"

#include "redirect.h"

#include <mutex>
#include <optional>
#include <unistd.h>

namespace
{
// A call being recorded. Its own steps may come from any thread.
class Recording
{
public:
    void note(const std::string &step)
    {
        const std::lock_guard lock(mutex_);
        note_output();
        steps_.push_back(step);
    }

    std::string output() { return output_.bytes(); }

    Lines steps()
    {
        const std::lock_guard lock(mutex_);
        note_output();
        return steps_;
    }

private:
    void note_output()
    {
        const std::string all = output_.bytes();
        while (noted_ < all.size()) {
            const size_t end = all.find('\n', noted_);
            if (end == std::string::npos) {
                steps_.push_back("print without a newline " + all.substr(noted_));
                noted_ = all.size();
                return;
            }
            steps_.push_back("print " + all.substr(noted_, end - noted_));
            noted_ = end + 1;
        }
    }

    Redirect output_{STDOUT_FILENO};
    std::mutex mutex_;
    Lines steps_;
    size_t noted_ = 0;
};

Recording *current = nullptr;
std::mutex current_mutex;

void make_current(Recording *recording)
{
    const std::lock_guard lock(current_mutex);
    current = recording;
}
} // namespace

Recorded record(const std::function<int()> &call)
{
    Recording recording;
    make_current(&recording);
    const int result = call();
    make_current(nullptr);
    return {result, recording.output(), "", recording.steps()};
}

Recorded record_with_errors(const std::function<int()> &call)
{
    const Redirect errors(STDERR_FILENO);
    Recorded run = record(call);
    run.errors = errors.bytes();
    return run;
}

std::string text(const Lines &lines)
{
    std::string bytes;
    for (const std::string &line : lines)
        bytes += line + '\n';
    return bytes;
}

Lines join(const std::vector<Lines> &parts)
{
    Lines all;
    for (const Lines &part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

void note_step(const std::string &step)
{
    const std::lock_guard lock(current_mutex);
    if (current != nullptr)
        current->note(step);
}
