// A recording of this program's own calls.
#ifndef TESTS_CMIF_RECORD_RECORDING_FIXTURE_H
#define TESTS_CMIF_RECORD_RECORDING_FIXTURE_H

#include "cmif-record/hooks.h"
#include "cmif-record/start.h"
#include "cmif/cmif.h"
#include "tests/support/store_directory.h"

#include <nlohmann/json.hpp>
#include <sys/msg.h>

class RecordingFixture : public HostStore
{
protected:
    using Json = nlohmann::json;

    void start(bool with_secrets = false)
    {
        place_ = cmif_record::start_recording(file(), {with_secrets});
        recording_ = cmif_record::open_recording(place_);
        cmif_record::record_to(*recording_);
    }
    [[nodiscard]] std::string file() const { return top() / "recording.jsonl"; }
    // With all that was done so far.
    [[nodiscard]] std::string recorded() const
    {
        recording_->flush();
        return file();
    }
    [[nodiscard]] std::string text() const { return read(recorded()); }
    [[nodiscard]] std::vector<Json> lines() const
    {
        std::vector<Json> found;
        std::istringstream all(text());
        for (std::string line; std::getline(all, line);)
            found.push_back(Json::parse(line));
        return found;
    }
    // Those after the head line; without their times and processes, which differ each time.
    [[nodiscard]] std::vector<Json> events() const
    {
        std::vector<Json> found = lines();
        found.erase(found.begin());
        for (Json &line : found)
            for (const char *member : {"time", "process", "thread"})
                line.erase(member);
        return found;
    }

    static int queue(key_t key) { return msgget(key, IPC_CREAT | 0600); }
    static int send(key_t key, long code, std::string payload)
    {
        payload.insert(0, reinterpret_cast<const char *>(&code), sizeof code);
        return msgsnd(queue(key), payload.data(), payload.size() - sizeof code, IPC_NOWAIT);
    }
    static ssize_t receive(key_t key, long code = 0)
    {
        char record[sizeof(long) + 1024];
        return msgrcv(queue(key), record, sizeof record - sizeof(long), code, IPC_NOWAIT);
    }
    // Of the AT channel; the fields in the order of the record.
    static std::string at(const std::array<std::string, 4> &fields, int ret_code = 0)
    {
        std::string payload(CMIF_AT_PAYLOAD, '\0');
        payload.replace(0, fields[0].size(), fields[0]);
        payload.replace(30, fields[1].size(), fields[1]);
        payload.replace(60, fields[2].size(), fields[2]);
        payload.replace(90, fields[3].size(), fields[3]);
        payload.replace(112, 4, reinterpret_cast<const char *>(&ret_code), 4);
        return payload;
    }
    static std::string profile(const std::string &user, const std::string &password)
    {
        std::string payload(CMIF_QMI_PAYLOAD, '\0');
        payload.replace(0, 3, "apn");
        payload.replace(41, user.size(), user);
        payload.replace(170, password.size(), password);
        for (const std::size_t offset : {299U, 303U, 307U})
            payload[offset] = '1';
        return payload;
    }

    [[nodiscard]] cmif_record::Recording &recording() const { return *recording_; }
    [[nodiscard]] pid_t writer() const { return place_.writer; }

private:
    cmif_record::RingPlace place_{};
    std::unique_ptr<cmif_record::Recording> recording_;
};

#endif
