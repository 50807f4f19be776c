#include "call_monitor.h"

#include "queues.h"
#include "timeout.h"

#include <algorithm>
#include <array>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace client
{
namespace
{

using Seconds = std::chrono::duration<double>;

constexpr Seconds report_interval{0.5};

// Appends what can be read; false at the end of the stream.
bool read_some(int fd, std::string &bytes)
{
    std::array<char, 4096> buffer{};
    const ssize_t size = read(fd, buffer.data(), buffer.size());
    if (size > 0)
        bytes.append(buffer.data(), static_cast<std::size_t>(size));
    return size > 0;
}

} // namespace

Marker::Marker(const char *path) : path_(path)
{
    struct stat found {
    };
    if (path == nullptr || lstat(path, &found) != 0)
        return;
    path_ = nullptr; // not this call's
    if (!S_ISREG(found.st_mode))
        throw Failure(Exit::other,
                      std::string(path) + " is not a regular file; the call would write into it",
                      std::string("Remove it: rm -r ") + path);
}

void Marker::remove() const
{
    if (path_ != nullptr)
        unlink(path_);
}

CallMonitor::CallMonitor(const CallOptions &options, const Call &call)
    : call_(call), timeout_(options.timeout.value_or(call.timeout)), marker_(call.marker),
      filter_(call.secret, options.trace), tracing_(options.trace != nullptr)
{
    const std::vector<RequestCode> codes = codes_of(call);
    if (slot_of(call.request.code)) {
        if (options.lock == nullptr || !options.lock->holds(call.request.code))
            lock_.emplace(codes, timeout_, [this] { signals_.check(); });
        unanswered_.emplace();
        for (const RequestCode code : codes)
            wait_for_earlier_replies(code);
    }
    Unanswered *unanswered = unanswered_ && call.request.is_answered ? &*unanswered_ : nullptr;
    child_.emplace(call, tracing_, sent_, unanswered, marker_.path());
}

// A reply to an earlier request that its caller gave up would be taken for the answer to this one.
void CallMonitor::wait_for_earlier_replies(RequestCode code)
{
    for (;;) {
        unanswered_->remove(code, clear_replies(code));
        if (unanswered_->count(code) == 0)
            return;
        unanswered_->forget_lost(code);
        signals_.check();
        if (timed_out())
            fail_earlier_unanswered({call_.request.name, code}, unanswered_->age(code), timeout_);
        constexpr useconds_t pause = 5'000;
        usleep(pause);
    }
}

Answer CallMonitor::wait_for_answer()
{
    poll_until_done();
    if (answering_) {
        end_child();
        fail_timed_out(sent_request(), sent_, unanswered_ ? &*unanswered_ : nullptr, timeout_);
    }
    filter_.finish();
    const int status = child_->wait();
    if (status != 0) { // another process has killed it
        marker_.remove();
        withdraw_request();
    }
    Answer answer = decode_answer(bytes_, status, call_);
    answer.answered = sent_.state() == SentRecord::State::answered;
    return answer;
}

void CallMonitor::poll_until_done()
{
    try {
        while ((answering_ || tracing_) && !timed_out())
            poll_once();
    } catch (...) { // a signal, or a failure in on_wait
        end_child();
        withdraw_request();
        throw;
    }
}

void CallMonitor::withdraw_request()
{
    if (unanswered_)
        withdraw(sent_request().code, sent_, *unanswered_);
}

void CallMonitor::poll_once()
{
    std::array<pollfd, 3> files{{{signals_.fd(), POLLIN, 0},
                                 {answering_ ? child_->answer_fd() : -1, POLLIN, 0},
                                 {tracing_ ? child_->lines_fd() : -1, POLLIN, 0}}};
    poll(files.data(), files.size(), poll_milliseconds());
    if (files[0].revents != 0)
        signals_.check();
    if (files[1].revents != 0)
        answering_ = read_some(child_->answer_fd(), bytes_);
    if (files[2].revents != 0)
        read_lines();
    report_waiting();
}

void CallMonitor::report_waiting()
{
    if (!answering_ || !call_.on_wait || Clock::now() < next_report_)
        return;
    call_.on_wait();
    next_report_ = Clock::now() + std::chrono::duration_cast<Clock::duration>(report_interval);
}

void CallMonitor::read_lines()
{
    std::string lines;
    tracing_ = read_some(child_->lines_fd(), lines);
    filter_.feed(lines);
}

// The one under way, when there are several.
Request CallMonitor::sent_request() const
{
    Request request = call_.request;
    if (sent_.state() != SentRecord::State::not_sent)
        request.code = sent_.request();
    return request;
}

void CallMonitor::end_child()
{
    child_->kill();
    marker_.remove();
    for (pollfd file{child_->lines_fd(), POLLIN, 0}; tracing_ && poll(&file, 1, 0) > 0;)
        read_lines();
    filter_.finish();
}

double CallMonitor::elapsed() const
{
    return Seconds(Clock::now() - started_).count();
}

bool CallMonitor::timed_out() const
{
    return answering_ && timeout_ > 0 && elapsed() >= timeout_;
}

int CallMonitor::poll_milliseconds() const
{
    if (timeout_ <= 0 && !call_.on_wait)
        return -1;
    double left = call_.on_wait ? report_interval.count() : timeout_;
    if (timeout_ > 0)
        left = std::min(left, timeout_ - elapsed());
    return static_cast<int>(std::clamp(left, 0.0, 3600.0) * 1000) + 1;
}

} // namespace client
