// The doctor's findings about daemons, files, the store and the modem, each with the problem made
// for real.
#include "client/code_lock.h"
#include "doctor_fixture.h"
#include "platform/host_store.h"

#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/mount.h>
#include <sys/stat.h>

namespace
{

TEST_F(Doctor, FindsNothingWrongWithAHealthyRouter)
{
    EXPECT_EQ(found(), Names{});
    Context context;
    doctor(context);
    EXPECT_EQ(context.status, Exit::done);
    EXPECT_NE(context.report.text().find("nothing wrong\n"), std::string::npos);
}

TEST_F(Doctor, EndsWithAnErrorWhenSomethingIsWrong)
{
    set("lte_sim_status", "SIM PIN");
    Context context;
    doctor(context);
    EXPECT_EQ(context.status, Exit::other);
    const Json finding = context.report.document()["findings"][0];
    EXPECT_EQ(finding["name"], "sim_pin_required");
    EXPECT_EQ(finding["severity"], "warning");
    EXPECT_EQ(finding["text"], "the SIM asks for its PIN");
    EXPECT_EQ(finding["hint"], "Enter it with 'cmifctl sim enter-pin'.");
    EXPECT_EQ(finding["fixed"], false);
}

// --- Daemons ---

TEST_F(Doctor, FindsADaemonThatEnded)
{
    ASSERT_EQ(found(), Names{});
    at_.reset();
    EXPECT_EQ(found(), Names{"daemon_ended"});
}

TEST_F(Doctor, FindsAFrozenDaemon)
{
    ASSERT_EQ(found(), Names{}); // it has taken a request
    at_->signal(SIGSTOP);
    EXPECT_TRUE(finds("daemon_frozen"));
    const std::string process = std::to_string(at_->process());
    EXPECT_NE(text_of("daemon_frozen").find("process " + process), std::string::npos);
    EXPECT_EQ(hint_for("daemon_frozen"),
              "Continue it with 'kill -CONT " + process + "', or restart it.");
}

// Which process it is, the queue does not tell yet.
TEST_F(Doctor, FindsADaemonThatWasFrozenBeforeItTookARequest)
{
    at_->signal(SIGSTOP);
    EXPECT_EQ(found(), Names{"daemon_silent"});
    EXPECT_NE(hint_for("daemon_silent").find("it is stopped: 'kill -CONT'"), std::string::npos);
}

TEST_F(Doctor, FindsADaemonThatDoesNotAnswer)
{
    at_.reset();
    at_ = std::make_unique<Child>([] {
        for (Record record{};;)
            msgrcv(queue(899), &record, sizeof record.payload, 0, 0);
    });
    EXPECT_TRUE(finds("daemon_silent"));
}

TEST_F(Doctor, FindsADaemonThatIsNotReady)
{
    write_file(qmi_ready_path, "off\n");
    EXPECT_EQ(found(), Names{"daemon_not_ready"});
    EXPECT_NE(text_of("daemon_not_ready").find("does not begin with \"on\""), std::string::npos);
    std::filesystem::remove(qmi_ready_path);
    EXPECT_EQ(found(), Names{"daemon_not_ready"});
    EXPECT_NE(text_of("daemon_not_ready").find(" is missing"), std::string::npos);
}

TEST_F(Doctor, FindsAndRemovesTheMarkerOfADaemonThatEnded)
{
    ASSERT_EQ(found(), Names{});
    qmi_.reset();
    EXPECT_EQ(found(), (Names{"daemon_ended", "ready_marker_left"}));
    EXPECT_EQ(fixed(), Names{"ready_marker_left"});
    EXPECT_FALSE(file_exists(qmi_ready_path));
}

// --- Files ---

TEST_F(Doctor, FindsFilesThatAreNotRegular)
{
    ASSERT_EQ(mkfifo(provider_list_path, 0600), 0);
    ASSERT_EQ(mkfifo(debug_log_path, 0600), 0);
    EXPECT_EQ(found(), (Names{"file_irregular", "file_irregular"}));
    EXPECT_NE(text_of("file_irregular").find("a program that opens it may block"),
              std::string::npos);
    EXPECT_EQ(hint_for("file_irregular"),
              std::string("Remove it: rm -r ") + provider_list_path + ".");
    EXPECT_EQ(fixed(), Names{});
}

TEST_F(Doctor, DistinguishesADirectoryAndALinkFromAFileThatBlocks)
{
    set("debug_lte_enable", "1");
    std::filesystem::remove(debug_log_path);
    std::filesystem::create_directory(debug_log_path);
    EXPECT_EQ(found(), Names{"file_irregular"}); // and not that the log can't be written
    EXPECT_NE(text_of("file_irregular").find("is a directory"), std::string::npos);
    std::filesystem::remove(debug_log_path);
    std::filesystem::create_symlink("elsewhere", debug_log_path);
    EXPECT_EQ(found(), Names{"file_irregular"});
    EXPECT_NE(text_of("file_irregular").find("is a symbolic link"), std::string::npos);
}

TEST_F(Doctor, DoesNotHangOnAMarkerThatIsAFifo)
{
    std::filesystem::remove(qmi_ready_path);
    ASSERT_EQ(mkfifo(qmi_ready_path, 0600), 0);
    EXPECT_TRUE(finds("file_irregular"));
}

void make_older(const char *path, long seconds)
{
    const timespec times[]{{time(nullptr) - seconds, 0}, {time(nullptr) - seconds, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, path, times, 0), 0);
}

TEST_F(Doctor, FindsAndRemovesAMarkerOfAProfileChangeThatNoProcessWorksOn)
{
    write_file(profile_busy_path, "1\n");
    EXPECT_EQ(found(), Names{}); // it may have just begun
    EXPECT_EQ(text_of("profile_changing"), "a change of the profile is in progress");
    make_older(profile_busy_path, 10);
    EXPECT_EQ(found(), Names{"profile_marker_left"});
    EXPECT_EQ(text_of("profile_changing"), "");
    EXPECT_EQ(fixed(), Names{"profile_marker_left"});
    EXPECT_FALSE(file_exists(profile_busy_path));
}

TEST_F(Doctor, FindsAProfileChangeThatTakesTooLong)
{
    write_file(profile_busy_path, "1\n");
    const client::CodeLock lock({{Channel::qmi, CMIF_QMI_MODIFY_PROFILE}}, 1, [] {});
    make_older(profile_busy_path, 30);
    EXPECT_EQ(found(), Names{});
    make_older(profile_busy_path, 90);
    EXPECT_EQ(found(), Names{"profile_change_long"});
    EXPECT_EQ(text_of("profile_changing"), "");
    EXPECT_EQ(fixed(), Names{});
    EXPECT_TRUE(file_exists(profile_busy_path));
}

TEST_F(Doctor, FindsALargeLog)
{
    write_file(debug_log_path, "");
    std::filesystem::resize_file(debug_log_path, 100ULL << 20);
    EXPECT_EQ(found(), Names{"log_space"});
    EXPECT_EQ(text_of("log_space"), "the debug log takes 102400 KiB");
}

TEST_F(Doctor, FindsALogThatCantBeWritten)
{
    set("debug_lte_enable", "1");
    EXPECT_EQ(found(), Names{});
    if (mount("tmpfs", "/data", "tmpfs", MS_RDONLY, nullptr) != 0)
        GTEST_SKIP() << "no mounts in this sandbox";
    EXPECT_EQ(found(), Names{"log_unwritable"});
}

TEST_F(Doctor, FindsThatThereIsLittleSpaceForTheLog)
{
    if (mount("tmpfs", "/data", "tmpfs", 0, "size=512k") != 0)
        GTEST_SKIP() << "no mounts in this sandbox";
    EXPECT_EQ(found(), Names{"log_space"});
    EXPECT_EQ(text_of("log_space"), "less than 1024 KiB is free in /data");
}

// --- Store ---

TEST_F(Doctor, FindsAStoreThatCantBeRead)
{
    setenv("CMIF_STORE", "/proc/nowhere", 1);
    EXPECT_TRUE(finds("store_unreadable"));
    EXPECT_FALSE(finds("store_empty"));
}

TEST_F(Doctor, FindsThatTheDaemonsStoreIsAnotherOne)
{
    at_.reset();
    at_ = std::make_unique<Child>([] {
        setenv("CMIF_STORE", "/tmp/theirs", 1);
        host_store_announce();
        tarnNvramConfig_set("lte_sim_status", "READY");
        answer_all(899, 900, CMIF_AT_PAYLOAD);
    });
    setenv("CMIF_STORE", "/tmp/ours", 1);
    EXPECT_EQ(found(), Names{"store_differs"});
    EXPECT_EQ(text_of("store_differs"),
              "the daemons use the store /tmp/theirs, and this command /tmp/ours; "
              "CMIF_STORE=/tmp/theirs selects theirs");
}

TEST_F(Doctor, KnowsTheDaemonsStoreByAnotherPath)
{
    std::filesystem::create_directory("/tmp/real");
    std::filesystem::create_directory_symlink("/tmp/real", "/tmp/alias");
    at_.reset();
    at_ = std::make_unique<Child>([] {
        setenv("CMIF_STORE", "/tmp/real/store", 1);
        host_store_announce();
        tarnNvramConfig_set("lte_sim_status", "READY");
        answer_all(899, 900, CMIF_AT_PAYLOAD);
    });
    setenv("CMIF_STORE", "/tmp/alias/store", 1);
    EXPECT_EQ(found(), Names{});
}

TEST_F(Doctor, FindsAnEmptyStoreBesideDaemonsThatAnswer)
{
    setenv("CMIF_STORE", "/tmp/another", 1);
    EXPECT_EQ(found(), Names{"store_empty"});
}

TEST_F(Doctor, NotesWhatARestartWouldLose)
{
    set("lte_qmi_apn", "internet");
    set("lte_qmi_auth", "0"); // as if it were unset
    EXPECT_EQ(found(), Names{});
    EXPECT_EQ(text_of("settings_unsaved"), "a restart loses the changes of lte_qmi_apn");
    save_settings({});
    EXPECT_EQ(text_of("settings_unsaved"), "");
}

TEST_F(Doctor, FindsSwitchesThatLeakSecrets)
{
    set("debug_at_cmif", "2");
    set("debug_qmi_cmif", "1");
    EXPECT_EQ(found(), (Names{"secrets_traced", "secrets_traced"}));
    EXPECT_NE(hint_for("secrets_traced").find("'cmifctl config set debug_at_cmif 0'"),
              std::string::npos);
    set("debug_at_cmif", "0");
    EXPECT_EQ(found(), Names{"secrets_traced"});
}

// --- SIM and network ---

TEST_F(Doctor, FindsThatTheModemIsMissing)
{
    set("lte_sim_status", "");
    EXPECT_EQ(found(), Names{"modem_missing"});
}

TEST_F(Doctor, FindsEachStateOfTheSimAndTheNetwork)
{
    const std::pair<const char *, const char *> sim[]{
        {"NOT INSERTED", "sim_absent"},       {"NOT READY", "sim_not_ready"},
        {"SIM PIN", "sim_pin_required"},      {"SIM PUK", "sim_puk_required"},
        {"PH-NET PIN", "sim_network_locked"}, {"SIM FAILURE", "sim_blocked"}};
    for (const auto &[status, name] : sim) {
        set("lte_sim_status", status);
        EXPECT_EQ(found(), Names{name});
    }
    EXPECT_EQ(hint_for("sim_blocked"), "Ask the operator for another SIM.");
    set("lte_mobile_pin1c", "1");
    set("lte_mobile_puk1c", "1");
    for (const auto &[status, name] :
         {std::pair{"SIM PIN", "sim_pin_last"}, {"SIM PUK", "sim_puk_last"}}) {
        set("lte_sim_status", status);
        EXPECT_EQ(found(), Names{name});
        EXPECT_NE(hint_for(name).find(" --force"), std::string::npos);
    }
    set("lte_sim_status", "READY");
    const std::pair<const char *, const char *> network[]{{"0", "not_registered"},
                                                          {"2", "searching"},
                                                          {"3", "registration_denied"},
                                                          {"4", "not_registered"}};
    for (const auto &[state, name] : network) {
        set("lte_network_reg_status_state", state);
        EXPECT_EQ(found(), Names{name});
    }
    set("lte_network_reg_status_state", "5");
    EXPECT_EQ(found(), Names{});
}

} // namespace
