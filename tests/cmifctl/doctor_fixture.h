// A router for the doctor: the real queues, daemons that answer 0 to everything, a store.
#ifndef TESTS_CMIFCTL_DOCTOR_FIXTURE_H
#define TESTS_CMIFCTL_DOCTOR_FIXTURE_H

#include "cmifctl/doctor/checks.h"
#include "cmifctl/verbs/settings.h"
#include "cmifctl/verbs/verbs.h"
#include "platform/tarn_nvram_config.h"
#include "tests/support/child.h"
#include "tests/support/files.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <sys/msg.h>

using namespace cmifctl;
using Names = std::vector<std::string>;

struct Record {
    long type;
    char payload[1024];
};

inline int queue(key_t key)
{
    return msgget(key, IPC_CREAT | 0666);
}

inline void put(key_t key, long type, std::size_t size = CMIF_AT_PAYLOAD)
{
    const Record record{type, {}};
    ASSERT_EQ(msgsnd(queue(key), &record, size, IPC_NOWAIT), 0);
}

inline void fill(key_t key, long type)
{
    const Record record{type, {}};
    while (msgsnd(queue(key), &record, CMIF_AT_PAYLOAD, IPC_NOWAIT) == 0) {}
}

[[noreturn]] inline void answer_all(key_t requests, key_t replies, std::size_t payload)
{
    for (Record record{};;)
        if (msgrcv(queue(requests), &record, sizeof record.payload, 0, 0) >= 0) {
            record = {record.type, {}};
            msgsnd(queue(replies), &record, payload, IPC_NOWAIT);
        }
}

// A router with daemons that answer 0 to everything, a ready SIM and a network.
class Doctor : public testing::Test
{
protected:
    Doctor()
    {
        for (const key_t key : {899, 900, 1158, 1159})
            queue(key);
        set("lte_sim_status", "READY");
        set("lte_network_reg_status_state", "1");
        write_file(qmi_ready_path, "on\n");
        at_ = std::make_unique<Child>([] { answer_all(899, 900, CMIF_AT_PAYLOAD); });
        qmi_ = std::make_unique<Child>([] { answer_all(1158, 1159, CMIF_QMI_PAYLOAD); });
    }

    static void set(const char *key, const char *value) { change_setting({}, key, value); }

    // The names of what is wrong; a name for each text.
    static Names found()
    {
        const Snapshot snapshot = take_snapshot({});
        Names names;
        for (const Check &check : all_checks())
            if (std::string_view(check.severity) != "note")
                names.insert(names.end(), check.find(snapshot).size(), check.name);
        return names;
    }
    static std::string text_of(const std::string &name)
    {
        return first_of(name, [](const Check &, const Problem &problem) { return problem.text; });
    }
    static std::string hint_for(const std::string &name) { return first_of(name, hint_of); }
    static bool finds(const std::string &name)
    {
        const Names names = found();
        return std::find(names.begin(), names.end(), name) != names.end();
    }

    // Runs the verb with --fix: what it has fixed.
    static Names fixed()
    {
        Context context;
        context.arguments.add("fix", "");
        doctor(context);
        const Json document = context.report.document();
        Names names;
        for (const Json &finding : document["findings"])
            if (finding["fixed"] == true)
                names.push_back(finding["name"]);
        return names;
    }

    std::unique_ptr<Child> at_, qmi_;

private:
    // Something about the first problem with this name; "" without one.
    template <class About>
    static std::string first_of(const std::string &name, const About &about)
    {
        const Snapshot snapshot = take_snapshot({});
        for (const Check &check : all_checks())
            if (const Problems problems = check.find(snapshot);
                check.name == name && !problems.empty())
                return about(check, problems.front());
        return "";
    }
};

#endif
