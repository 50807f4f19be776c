// The saved configuration: saved.conf, as the store writes it, as people edit it, and damaged.
#include "in_child.h"
#include "store_errors.h"

#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;

class HostStoreSaved : public HostStoreErrors
{
protected:
    fs::path damaged(int number) const
    {
        return saved().string() + ".damaged-" + std::to_string(number);
    }
};

TEST_F(HostStoreSaved, KeepsEveryByte)
{
    std::map<std::string, std::string> expected{{" both ends ", " both ends "},
                                                {"#comment", "#comment"},
                                                {"a=b", "=a=b="},
                                                {"=", "\\"},
                                                {"\\x41", "\\x41\\n"},
                                                {"two\nlines", "\n\n"},
                                                {"\t", "\t\r\n "},
                                                {"caf\xc3\xa9", "\xff"}};
    std::string every;
    for (int byte = 1; byte < 256; ++byte) {
        every += static_cast<char>(byte);
        expected[std::string("key") + static_cast<char>(byte)] = every;
    }
    expected[every] = every;
    for (const auto &[key, value] : expected)
        ASSERT_EQ(set(key, value), 0);
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(host_store_power_cycle(), 0);
    EXPECT_EQ(all(), expected);
}

TEST_F(HostStoreSaved, IsSortedText)
{
    set("b", "two\nlines \\ \x01\x7f");
    set("a=#", "plain text, caf\xc3\xa9");
    set("#c", " edges ");
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(read(saved()), "# CMIF configuration: key=value, one to a line.\n"
                             "# \\n \\r \\t \\\\ and \\xHH stand for bytes that can't be written.\n"
                             "\\x23c=\\x20edges\\x20\n"
                             "a\\x3d#=plain text, caf\xc3\xa9\n"
                             "b=two\\nlines \\\\ \\x01\\x7f\n");
}

TEST_F(HostStoreSaved, MayBeEdited)
{
    write(saved(), "# by hand\r\n\r\n  second = 2 \r\nfirst=a = b # c\n\ttwice=1\ntwice=2\n"
                   "empty=\nescaped=\\x4A\\x4a\\t\nlast=no newline");
    const std::map<std::string, std::string> expected{{"second", "2"},
                                                      {"first", "a = b # c"},
                                                      {"twice", "2"},
                                                      {"escaped", "JJ\t"},
                                                      {"last", "no newline"}};
    EXPECT_EQ(all(), expected);
}

// The file is read in blocks of 16 KiB.
TEST_F(HostStoreSaved, MayHaveAnySize)
{
    for (const std::size_t size : {0U, 1U, 2U, 16383U, 16384U, 16385U, 32769U}) {
        write(saved(), std::string(size, '#'));
        EXPECT_EQ(host_store_power_cycle(), 0);
        expect_no_error();
    }
}

TEST_F(HostStoreSaved, SurvivesAPowerCycleWhileTheRestIsLost)
{
    set("saved", "1");
    set("changed", "old");
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    set("changed", "new");
    set("unsaved", "1");
    set("saved", "");
    EXPECT_EQ(host_store_power_cycle(), 0);
    const std::map<std::string, std::string> expected{{"saved", "1"}, {"changed", "old"}};
    EXPECT_EQ(all(), expected);
}

TEST_F(HostStoreSaved, IsEmptyUntilTheFirstSave)
{
    set("unsaved", "1");
    EXPECT_EQ(host_store_power_cycle(), 0);
    EXPECT_TRUE(all().empty());
}

TEST_F(HostStoreSaved, IsLoadedIntoANewDatabase)
{
    EXPECT_EQ(in_child([] {
                  require(set("saved", "1") == 0 && tarnNvramConfig_save() == 0);
                  require(set("unsaved", "1") == 0);
              }),
              0);
    const fs::path file = database();
    ASSERT_TRUE(fs::remove(file));
    fs::remove(file.string() + "-lock");
    const std::map<std::string, std::string> expected{{"saved", "1"}};
    EXPECT_EQ(all(), expected);
}

struct BadLine {
    std::string line;
    const char *error;
};

TEST_F(HostStoreSaved, ReportsWhatIsWrongWithALineAndSkipsIt)
{
    const std::string long_key(host_store_key_limit + 1, 'k');
    const std::string long_value(host_store_value_limit + 1, 'v');
    const char *const escape = "an unknown escape after a backslash, or a NUL";
    const BadLine rows[] = {
        {"no equals", "no = in it"},
        {"=value", "no key before the ="},
        {" = value", "no key before the ="},
        {"bad=\\q", escape},
        {"bad\\q=1", escape},
        {"bad=\\", escape},
        {"bad=\\x", escape},
        {"bad=\\x1", escape},
        {"bad=\\xg1", escape},
        {"bad=\\x1g", escape},
        {"bad=\\x00", escape},
        {"bad=\\xG0", escape},
        {std::string("bad=\0", 5), escape},
        {long_key + "=1", "the key is too long"},
        {"long=" + long_value, "the value is too long"},
    };
    const std::map<std::string, std::string> rest{{"also_good", "2"}, {"good", "1"}};
    std::string comments;
    for (const BadLine &row : rows) {
        SCOPED_TRACE(row.line);
        comments += "#\n"; // so that each row is reported with a number of its own
        write(saved(), comments + "good=1\n" + row.line + "\nalso_good=2\n");
        const std::size_t before = errors().size();
        EXPECT_EQ(host_store_power_cycle(), 0);
        EXPECT_EQ(errors().substr(before),
                  "cmif store: " + saved().string() + ": line " +
                      std::to_string(comments.size() / 2 + 2) + ": " + row.error +
                      ": this is skipped; correct it and restart cmif-sim; a save replaces the "
                      "file and keeps this one\n");
        EXPECT_EQ(all(), rest);
    }
}

TEST_F(HostStoreSaved, AcceptsKeysAndValuesOfTheFullLength)
{
    const std::string key(host_store_key_limit, 'k'), value(host_store_value_limit, 'v');
    write(saved(), key + "=" + value + "\n");
    EXPECT_EQ(get(key), value);
    expect_no_error();
}

TEST_F(HostStoreSaved, CountsTheDamagedLinesAfterTheFirst)
{
    const std::string text = "good=1\nno equals\n=value\nalso_good=2\nbad=\\q\n";
    write(saved(), text);
    const std::map<std::string, std::string> expected{{"good", "1"}, {"also_good", "2"}};
    EXPECT_EQ(all(), expected);
    expect_error(saved().string() +
                 ": line 2: no = in it (and 2 more such lines): this is skipped; correct it and "
                 "restart cmif-sim; a save replaces the file and keeps this one");
    EXPECT_EQ(read(saved()), text);
}

// The store remembers 64 messages, which it prints once; further ones it prints each time.
TEST_F(HostStoreSaved, ReportsAnyNumberOfErrors)
{
    const auto reports = [this](int line) {
        const std::size_t before = errors().size();
        write(saved(), std::string(static_cast<std::size_t>(line - 1), '\n') + "damaged\n");
        EXPECT_EQ(host_store_power_cycle(), 0);
        return errors().size() > before;
    };
    for (int line = 1; line <= 70; ++line)
        EXPECT_TRUE(reports(line)) << line;
    for (int line = 1; line <= 64; ++line)
        EXPECT_FALSE(reports(line)) << line;
    EXPECT_TRUE(reports(65));
}

TEST_F(HostStoreSaved, IsKeptWhenASaveReplacesADamagedFile)
{
    write(saved(), "good=1\ndamaged one\n");
    set("new", "2");
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(read(damaged(1)), "good=1\ndamaged one\n");
    expect_error_with(saved().string() + ": could not be read completely; it is kept as " +
                      damaged(1).string() + "\n");
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_FALSE(fs::exists(damaged(2)));
    write(saved(), "damaged two\n");
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(read(damaged(1)), "good=1\ndamaged one\n");
    EXPECT_EQ(read(damaged(2)), "damaged two\n");
    host_store_power_cycle();
    const std::map<std::string, std::string> expected{{"good", "1"}, {"new", "2"}};
    EXPECT_EQ(all(), expected);
}

TEST_F(HostStoreSaved, IsNotReplacedAfter999DamagedOnes)
{
    for (int number = 1; number < 999; ++number)
        write(damaged(number), "");
    write(saved(), "damaged 999\n");
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(read(damaged(999)), "damaged 999\n");
    write(saved(), "damaged 1000\n");
    EXPECT_EQ(tarnNvramConfig_save(), -1);
    EXPECT_EQ(read(saved()), "damaged 1000\n");
    expect_error_with("saved.conf: not saved: File exists; make room or set CMIF_STORE to a "
                      "directory that you can write\n");
}

TEST_F(HostStoreSaved, IgnoresTheUnfinishedFileOfAKilledProcess)
{
    write(saved().string() + ".new", "unfinished=1");
    set("key", "value");
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_NE(read(saved()).find("\nkey=value\n"), std::string::npos);
    EXPECT_FALSE(fs::exists(saved().string() + ".new"));
    expect_no_error();
}

TEST_F(HostStoreSaved, IsNotReadFromAPipe)
{
    fs::create_directory(store());
    ASSERT_EQ(mkfifo(saved().c_str(), 0600), 0);
    EXPECT_EQ(get("key"), "");
    expect_error_with("saved.conf: not a file that a save has written: this is skipped;");
}

TEST_F(HostStoreSaved, IsNotReadFromAFileOfMoreThan64MiB)
{
    constexpr std::uintmax_t limit = 64 << 20;
    write(saved(), "good=1\n#");
    fs::resize_file(saved(), limit);
    EXPECT_EQ(get("good"), "1");
    expect_no_error();
    fs::resize_file(saved(), limit + 1);
    EXPECT_EQ(host_store_power_cycle(), 0);
    EXPECT_EQ(get("good"), "");
    expect_error_with("saved.conf: not a file that a save has written: this is skipped;");
}

TEST_F(HostStoreSaved, IsNotReplacedIfItIsADirectory)
{
    fs::create_directories(saved());
    EXPECT_EQ(set("key", "value"), 0);
    EXPECT_EQ(get("key"), "value");
    const auto before = open_descriptors();
    EXPECT_EQ(tarnNvramConfig_save(), -1);
    EXPECT_EQ(open_descriptors(), before);
    EXPECT_TRUE(fs::is_directory(saved()));
    expect_error_with("saved.conf: not saved: ");
}

// As a plain user: root may read any file.
TEST_F(HostStoreSaved, ReportsAFileThatItMayNotRead)
{
    write(saved(), "key=1\n");
    fs::permissions(saved(), fs::perms::none);
    if (geteuid() == 0) {
        fs::permissions(top(), fs::perms(0755));
        ASSERT_EQ(chown(store().c_str(), 65534, 65534) | chown(saved().c_str(), 65534, 65534), 0);
    }
    constexpr int no_second_user = 77;
    const int status = in_child([] {
        if (!become_plain_user())
            _exit(no_second_user);
        require(set("key", "2") == 0 && tarnNvramConfig_save() == 0);
    });
    if (status == no_second_user)
        GTEST_SKIP() << "there is only one user here";
    EXPECT_EQ(status, 0);
    expect_error_with(saved().string() + ": Permission denied: this is skipped; correct it");
    expect_error_with("it is kept as " + damaged(1).string());
}

} // namespace
