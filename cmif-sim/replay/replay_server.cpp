#include "replay_server.h"

#include "cmif-sim/control/protocol.h"
#include "cmif/cmif.h"
#include "daemons/at_forms.h"
#include "daemons/cme_error.h"
#include "daemons/message_queue.h"
#include "daemons/publish/provider_file.h"
#include "daemons/publish/public_file.h"
#include "daemons/qmi_requests.h"
#include "platform/tarn_nvram_config.h"
#include "replay.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <sys/msg.h>
#include <unistd.h>

namespace cmif_sim
{
namespace
{

using cmif_record::Channel;
using cmif_record::Event;

constexpr timespec poll_interval{0, 2'000'000};

const char *name_of(Channel channel, long code)
{
    const daemons::AtForm *form = daemons::find_at_form(code);
    const daemons::QmiRequest *request = daemons::find_qmi_request(code);
    if (channel == Channel::at)
        return form ? form->name : "unknown";
    return request ? request->name : "unknown";
}

bool is_never_answered(Channel channel, long code)
{
    return code ==
           (channel == Channel::at ? long{CMIF_AT_DOWNLOAD_MODE} : long{CMIF_QMI_DOWNLOAD_MODE});
}

std::size_t number_of_requests(const cmif_record::RecordingContents &contents)
{
    return static_cast<std::size_t>(
        std::count_if(contents.events.begin(), contents.events.end(),
                      [](const Event &event) { return event.type == Event::Type::request; }));
}

class ReplayServer
{
public:
    ReplayServer(const cmif_record::RecordingContents &contents, double pace)
        : recorded_(number_of_requests(contents)),
          replay_(contents, pace, [this](const Event &event) { carry_out(event); })
    {
    }

    bool prepare()
    {
        unlink(CMIF_QMI_READY_FILE);
        daemons::remove_provider_file();
        if (!at_requests_.prepare() || !at_replies_.prepare() || !qmi_requests_.prepare() ||
            !qmi_replies_.prepare())
            return false;
        at_replies_.clear();
        qmi_replies_.clear();
        replay_.start(now());
        return daemons::write_public_file(CMIF_QMI_READY_FILE, "on\n");
    }

    // Any thread may call.
    BoxStatus status() const
    {
        return {since_, std::nullopt, ReplayStatus{recorded_, taken_, refused_}};
    }

    void serve()
    {
        while (serve_next(Channel::at, CMIF_AT_REQUEST_KEY) ||
               serve_next(Channel::qmi, CMIF_QMI_REQUEST_KEY))
            continue;
        replay_.advance(now());
    }

private:
    static Replay::Time now() { return std::chrono::steady_clock::now(); }

    bool serve_next(Channel channel, key_t key)
    {
        alignas(long) char bytes[sizeof(long) + 1024];
        constexpr std::size_t room = sizeof bytes - sizeof(long);
        const ssize_t size =
            msgrcv(msgget(key, IPC_CREAT | 0666), bytes, room, 0, IPC_NOWAIT | MSG_NOERROR);
        if (size < 0)
            return false;
        cmif_record::Record record{0, {bytes + sizeof(long), static_cast<std::size_t>(size)}};
        std::memcpy(&record.code, bytes, sizeof record.code);
        if (replay_.take(cmif_record::request_event(channel, record), now()))
            ++taken_;
        else
            refuse(channel, record.code);
        return true;
    }

    void refuse(Channel channel, long code)
    {
        ++refused_;
        const bool answered = !is_never_answered(channel, code);
        std::fprintf(stderr, "cmif-sim: %s request %ld (%s) was not recorded, or less often%s\n",
                     channel == Channel::at ? "AT" : "QMI", code, name_of(channel, code),
                     answered ? "; the reply is not_supported" : "");
        const int error = static_cast<int>(daemons::CmeError::not_supported);
        Event reply{Event::Type::reply};
        reply.channel = channel;
        reply.code = code;
        reply.payload.assign(channel == Channel::at ? CMIF_AT_PAYLOAD : CMIF_QMI_PAYLOAD, '\0');
        const std::size_t offset = channel == Channel::at ? CMIF_AT_PAYLOAD - sizeof error : 0;
        std::memcpy(reply.payload.data() + offset, &error, sizeof error);
        if (answered)
            carry_out(reply);
    }

    void carry_out(const Event &event)
    {
        if (event.type == Event::Type::setting)
            tarnNvramConfig_set(event.name.c_str(), event.value.c_str());
        if (event.type == Event::Type::file)
            daemons::write_public_file(CMIF_PROVIDER_LIST_FILE, event.value);
        if (event.type != Event::Type::reply)
            return;
        std::string record(sizeof event.code, '\0');
        std::memcpy(record.data(), &event.code, sizeof event.code);
        record += event.payload;
        const auto &queue = event.channel == Channel::at ? at_replies_ : qmi_replies_;
        queue.send(record.data(), event.payload.size(), never_);
    }

    std::time_t since_ = std::time(nullptr);
    std::size_t recorded_;
    std::atomic<std::size_t> taken_ = 0, refused_ = 0;
    daemons::StopFlag never_;
    daemons::MessageQueue at_requests_{CMIF_AT_REQUEST_KEY}, at_replies_{CMIF_AT_REPLY_KEY};
    daemons::MessageQueue qmi_requests_{CMIF_QMI_REQUEST_KEY}, qmi_replies_{CMIF_QMI_REPLY_KEY};
    Replay replay_;
};

} // namespace

int serve_recording(const cmif_record::RecordingContents &contents, double pace,
                    const sigset_t &signals, const std::vector<int> &listening,
                    const std::function<void()> &ready)
{
    ReplayServer server(contents, pace);
    if (!server.prepare())
        return 1;
    const ControlServer control(
        listening, {[](const std::string &) {
                        return Answer{2, "1:1: a replayed recording takes no commands\n"};
                    },
                    [&server] { return server.status(); }});
    ready();
    while (sigtimedwait(&signals, nullptr, &poll_interval) == -1)
        server.serve();
    unlink(CMIF_QMI_READY_FILE);
    return 0;
}

} // namespace cmif_sim
