// Arguments that the development store refuses.
#include "store_errors.h"

#include <cstring>
#include <vector>

namespace
{

const std::string long_key(host_store_key_limit + 1, 'k');
const std::string long_value(host_store_value_limit + 1, 'v');

struct Refused {
    int (*call)(); // its result
    int result;
    const char *line;
};

int get_length(const char *key)
{
    return static_cast<int>(std::strlen(tarnNvramConfig_get(key)));
}

const std::vector<Refused> refused = {
    {[] { return get_length(nullptr); }, 0,
     "tarnNvramConfig_get: the key is a null pointer; nothing is done"},
    {[] { return get_length(""); }, 0,
     "tarnNvramConfig_get: the key is empty; nothing is done; give one"},
    {[] { return get_length(long_key.c_str()); }, 0,
     "tarnNvramConfig_get: the key has more than 255 bytes; nothing is done; shorten it"},
    {[] { return tarnNvramConfig_set(nullptr, "value"); }, -1,
     "tarnNvramConfig_set: the key is a null pointer; nothing is done"},
    {[] { return tarnNvramConfig_set("key", nullptr); }, -1,
     "tarnNvramConfig_set: the value is a null pointer; nothing is done"},
    {[] { return tarnNvramConfig_set("", "value"); }, -1,
     "tarnNvramConfig_set: the key is empty; nothing is done; give one"},
    {[] { return tarnNvramConfig_set(long_key.c_str(), "value"); }, -1,
     "tarnNvramConfig_set: the key has more than 255 bytes; nothing is done; shorten it"},
    {[] { return tarnNvramConfig_set("key", long_value.c_str()); }, -1,
     "tarnNvramConfig_set: the value has more than 8191 bytes; nothing is done; shorten it"},
    {[] { return tarnNvramConfig_match(nullptr, ""); }, 0,
     "tarnNvramConfig_match: the key is a null pointer; nothing is done"},
    {[] { return tarnNvramConfig_match("never_set", nullptr); }, 0,
     "tarnNvramConfig_match: the text is a null pointer; nothing is done"},
    {[] { return tarnNvramConfig_match("", ""); }, 0,
     "tarnNvramConfig_match: the key is empty; nothing is done; give one"},
    {[] { return tarnNvramConfig_match(long_key.c_str(), ""); }, 0,
     "tarnNvramConfig_match: the key has more than 255 bytes; nothing is done; shorten it"},
};

TEST_F(HostStoreErrors, RefusedArgumentsChangeNothingAndAreReportedOnce)
{
    ASSERT_EQ(set("key", "old"), 0);
    for (const Refused &row : refused) {
        SCOPED_TRACE(row.line);
        const std::size_t before = errors().size();
        EXPECT_EQ(row.call(), row.result);
        EXPECT_EQ(row.call(), row.result);
        EXPECT_EQ(errors().substr(before), std::string("cmif store: ") + row.line + "\n");
    }
    const std::map<std::string, std::string> unchanged{{"key", "old"}};
    EXPECT_EQ(all(), unchanged);
}

// A key of the full length is accepted, and so is a text longer than any value.
TEST_F(HostStoreErrors, ArgumentsOfTheFullLengthAreAccepted)
{
    const std::string key(host_store_key_limit, 'k'), value(host_store_value_limit, 'v');
    EXPECT_EQ(set(key, value), 0);
    EXPECT_EQ(get(key), value);
    EXPECT_EQ(tarnNvramConfig_match(key.c_str(), value.c_str()), 1);
    EXPECT_EQ(tarnNvramConfig_match(key.c_str(), long_value.c_str()), 0);
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(host_store_power_cycle(), 0);
    EXPECT_EQ(get(key), value);
    expect_no_error();
}

} // namespace
