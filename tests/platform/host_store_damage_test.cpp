// The database file: damaged, cut short, or never finished.
#include "filled_store.h"

namespace
{

namespace fs = std::filesystem;

struct Damage {
    friend void PrintTo(const Damage &damage, std::ostream *out) { *out << damage.name; }
    const char *name;
    void (*inflict)(const fs::path &file);
    const char *error;
};

class HostStoreDamage : public HostStoreDatabase, public testing::WithParamInterface<Damage>
{
};

TEST_P(HostStoreDamage, IsReportedWithARemedyThatWorks)
{
    fill();
    const fs::path file = database();
    GetParam().inflict(file);
    const auto before = open_descriptors();
    EXPECT_EQ(get("key0"), "");
    EXPECT_EQ(set("key0", "value"), -1);
    EXPECT_EQ(open_descriptors(), before);
    expect_error(file.string() + ": " + GetParam().error +
                 "; end the programs that use the store and delete " + file.string() +
                 "*; the saved configuration stays");
    remove_database();
    EXPECT_EQ(in_child([] { require(has_all()); }), 0);
}

void overwrite(const fs::path &file, std::streamoff offset, const std::string &bytes)
{
    std::fstream(file, std::ios::in | std::ios::out | std::ios::binary).seekp(offset) << bytes;
}

INSTANTIATE_TEST_SUITE_P(
    OfEachKind, HostStoreDamage,
    testing::Values(Damage{"NotADatabase",
                           [](const fs::path &file) {
                               std::ofstream(file) << std::string(9000, 'x');
                           },
                           "MDB_INVALID: File is not an LMDB file"},
                    Damage{"CutShort", [](const fs::path &file) { fs::resize_file(file, 8192); },
                           "MDB_CORRUPTED: Located page was wrong type"},
                    Damage{"LastPageBeyondTheMap",
                           [](const fs::path &file) { // last page 16384, beyond 64 MiB
                               for (const std::streamoff page : {0, 4096})
                                   overwrite(file, page + 136,
                                             std::string("\0\x40\0\0\0\0\0\0", 8));
                           },
                           "MDB_CORRUPTED: Located page was wrong type"},
                    Damage{"OfAnotherVersion",
                           [](const fs::path &file) {
                               for (const std::streamoff page : {0, 4096})
                                   overwrite(file, page + 20, "\x63");
                           },
                           "MDB_VERSION_MISMATCH: Database environment version mismatch"}),
    [](const testing::TestParamInfo<Damage> &damage) { return damage.param.name; });

// Whatever the size, no process is killed, and each reads all values or reports the damage.
TEST_F(HostStoreDatabase, CutShortToAnySizeKillsNoProcess)
{
    fill();
    const std::string whole = read(database());
    const fs::path file = database();
    ASSERT_GT(whole.size(), 8192U);
    for (std::size_t size = 0; size <= whole.size(); size += 512) {
        for (const std::size_t cut : {size, size + 1, size - 1}) {
            if (cut > whole.size())
                continue;
            write(file, whole.substr(0, cut));
            const bool unfinished = cut < 8192, complete = cut == whole.size();
            const int status = in_child([] {
                const bool readable = has_all(), writable = set("key0", std::string(100, 'v')) == 0;
                require(readable && writable);
            });
            if (unfinished || complete)
                EXPECT_EQ(status, 0) << cut;
            else
                EXPECT_LE(status, 1) << cut; // an end that was unused does no harm
        }
    }
    expect_error_with(file.string() + ": MDB_");
}

TEST_F(HostStoreDatabase, UnfinishedIsSilentlyCreatedAgain)
{
    fill();
    const fs::path file = database();
    for (const unsigned size : {0U, 1U, 100U, 4095U, 4096U, 4097U, 8191U}) {
        fs::resize_file(file, size);
        EXPECT_EQ(in_child([] { require(has_all()); }), 0) << size;
    }
    expect_no_error();
}

TEST_F(HostStoreDatabase, IsNotExtendedByOpeningIt)
{
    fill();
    const auto size = fs::file_size(database());
    EXPECT_EQ(in_child([] { require(has_all()); }), 0);
    EXPECT_EQ(fs::file_size(database()), size);
}

// Another user may have put it there, to a file that only this one may read.
class HostStoreLinked : public HostStoreErrors
{
};

TEST_F(HostStoreLinked, SavedConfigurationIsNotRead)
{
    const fs::path other = top() / "other";
    write(other, "secret=1234\n");
    fs::create_directories(store());
    fs::create_symlink(other, saved());
    EXPECT_EQ(get("secret"), "");
    host_store_list_saved([](const char *key, const char *, void *) { ADD_FAILURE() << key; },
                          nullptr);
    expect_error_with("saved.conf: a symbolic link, which no save makes: this is skipped;");
    EXPECT_EQ(set("key", "value"), 0);
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(saved())));
    EXPECT_TRUE(fs::is_symlink(saved().string() + ".damaged-1"));
    EXPECT_EQ(read(other), "secret=1234\n");
}

} // namespace
