// No secret and no identity gets into a recording, whatever way it takes.
#include "cmif-record/record_members.h"
#include "recording_fixture.h"

#include <cctype>

namespace
{

struct SecretFields {
    long code;
    std::array<std::string, 4> fields;
    std::vector<std::string> secrets;
};

// Every request of the AT channel that carries a secret.
const SecretFields requests[] = {
    {9, {"1", "70911951", "", ""}, {"70911951"}},
    {10, {"1", "00102", "80822862", "PN"}, {"80822862"}},
    {11, {"90733773", "", "", ""}, {"90733773"}},
    {12, {"60644684", "", "", ""}, {"60644684"}},
    {13, {"50555595", "40466406", "", ""}, {"50555595", "40466406"}},
    {14, {"30377317", "20288228", "", ""}, {"30377317", "20288228"}},
};

struct SecretKey {
    const char *key, *value;
};

// Every key of the daemons that holds one, and keys that a platform may have.
const SecretKey keys[] = {
    {"lte_mobile_imei", "356938035643809"},
    {"lte_mobile_iccid", "8949020000123456789"},
    {"lte_mobile_imsi", "262019876543210"},
    {"lte_subscriber_num_number", "+4915112345678"},
    {"lte_qmi_user", "Subscriber#7"},
    {"lte_qmi_password", "hunter2\xC3\xBC"},
    {"lte_mobile_sms_da_1", "+4915187654321"},
    {"lte_mobile_sms_da_17", "Aunt Mildred"},
    {"lte_mobile_sms_text_1", "The code is 448822, tell no one"},
    {"lte_mobile_sms_text_1000", "Br\xFC"
                                 "cke"}, // not UTF-8
    {"lte_saved_pin", "48151623"},
    {"vendor_PUK", "42481516"},
    {"vendor_Passwd", "correct horse"},
    {"voip_msisdn", "4915100000000"},
};

constexpr const char *public_keys[] = {"lte_sim_pin_mode", "lte_mobile_pin1c", "lte_qmi_apn",
                                       "lte_operator_select_operator"};

std::string hex(const std::string &bytes)
{
    std::string out;
    for (const char c : bytes) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(c));
        out += digits;
    }
    return out;
}

class Secrets : public RecordingFixture
{
protected:
    // As it is, and among the bytes of a payload.
    void expect_hidden(const std::string &secret) const
    {
        EXPECT_EQ(text().find(secret), std::string::npos) << secret;
        EXPECT_EQ(text().find(hex(secret)), std::string::npos) << secret;
    }
    void expect_found(const std::string &secret) const
    {
        EXPECT_NE(text().find(secret), std::string::npos) << secret;
    }
    void pass_all() const
    {
        for (const SecretFields &request : requests)
            for (const key_t key : {CMIF_AT_REQUEST_KEY, CMIF_AT_REPLY_KEY}) {
                ASSERT_EQ(send(key, request.code, at(request.fields)), 0);
                ASSERT_EQ(receive(key), CMIF_AT_PAYLOAD);
            }
        ASSERT_EQ(send(CMIF_QMI_REQUEST_KEY, 3, profile("Subscriber#7", "hunter3")), 0);
        ASSERT_EQ(receive(CMIF_QMI_REQUEST_KEY), CMIF_QMI_PAYLOAD);
        for (const SecretKey &each : keys)
            ASSERT_EQ(set(each.key, each.value), 0);
    }
};

TEST_F(Secrets, AreReplacedInEveryRequestAndKey)
{
    start();
    pass_all();
    EXPECT_EQ(events().size(), 4 * std::size(requests) + 2 + std::size(keys));
    for (const SecretFields &request : requests)
        for (const std::string &secret : request.secrets)
            expect_hidden(secret);
    for (const SecretKey &each : keys)
        expect_hidden(each.value);
    expect_hidden("hunter3");
    expect_hidden("448822");
}

TEST_F(Secrets, AreKeptOnDemand)
{
    start(true);
    pass_all();
    EXPECT_EQ(lines().front()["secrets"], "kept");
    for (const SecretFields &request : requests)
        for (const std::string &secret : request.secrets)
            expect_found(secret);
    expect_found("hunter3");
    expect_found("The code is 448822, tell no one");
    expect_found("{\"hex\":\"4272fc636b65\"}");
}

TEST_F(Secrets, HaveStandInsOfTheirForm)
{
    start();
    ASSERT_EQ(send(CMIF_AT_REQUEST_KEY, 12, at({"60644684", "", "", ""})), 0);
    set("lte_subscriber_num_number", "+4915112345678");
    const auto found = events();
    const std::string pin = found[0]["fields"]["pin"], number = found[1]["value"];
    EXPECT_EQ(pin.size(), 8U);
    EXPECT_TRUE(std::all_of(pin.begin(), pin.end(), [](unsigned char c) { return isdigit(c); }));
    EXPECT_EQ(number.size(), 14U);
    EXPECT_EQ(number[0], '+');
    EXPECT_EQ(lines().front()["secrets"], "replaced");
}

TEST_F(Secrets, ThatAreEqualHaveEqualStandIns)
{
    start();
    ASSERT_EQ(send(CMIF_AT_REQUEST_KEY, 12, at({"1234", "", "", ""})), 0);
    ASSERT_EQ(send(CMIF_AT_REQUEST_KEY, 13, at({"1234", "4321", "", ""})), 0);
    const auto found = events();
    EXPECT_EQ(found[0]["fields"]["pin"], found[1]["fields"]["old_pin"]);
    EXPECT_NE(found[1]["fields"]["old_pin"], found[1]["fields"]["new_pin"]);
}

// Whatever such a record holds may be part of a secret.
TEST_F(Secrets, AreReplacedInRecordsThatCannotBeDecoded)
{
    start();
    const std::string secret = "60644684";
    const std::string unterminated = secret + std::string(22, '7');
    const std::string forms[] = {
        at({unterminated, "", "", ""}), // no NUL
        at({"", secret, "", ""}),       // in a field that the request doesn't have
        at({"", "", "", ""}) + secret,  // too long
        secret,                         // too short
        at({std::string("1\0", 2) + secret, "", "", ""}), // after the end of the text
    };
    for (const std::string &form : forms)
        for (const long code : {12, 4, 99}) {
            ASSERT_EQ(send(CMIF_AT_REQUEST_KEY, code, form), 0);
            ASSERT_EQ(send(CMIF_AT_REPLY_KEY, code, form), 0);
            receive(CMIF_AT_REQUEST_KEY);
            receive(CMIF_AT_REPLY_KEY);
        }
    for (const long code : {3, 4, 6, 77}) {
        ASSERT_EQ(send(CMIF_QMI_REQUEST_KEY, code, secret), 0);
        ASSERT_EQ(send(CMIF_QMI_REPLY_KEY, code, secret), 0);
    }
    expect_hidden(secret);
    EXPECT_GT(events().size(), 60U);
}

// By these a replay knows which fields match any text.
TEST(SecretFields, AreThoseThatAreReplaced)
{
    using cmif_record::Channel;
    using cmif_record::is_secret_field;
    for (const char *name : {"user", "password"})
        EXPECT_TRUE(is_secret_field(Channel::qmi, CMIF_QMI_MODIFY_PROFILE, name)) << name;
    for (const char *name : {"apn", "auth", ""})
        EXPECT_FALSE(is_secret_field(Channel::qmi, CMIF_QMI_MODIFY_PROFILE, name)) << name;
    EXPECT_TRUE(is_secret_field(Channel::at, 12, "pin"));
    EXPECT_TRUE(is_secret_field(Channel::at, 14, "puk"));
    EXPECT_FALSE(is_secret_field(Channel::at, 9, "mode"));
    EXPECT_FALSE(is_secret_field(Channel::at, 15, "pin"));
    EXPECT_FALSE(is_secret_field(Channel::at, 99, "pin"));
}

TEST_F(Secrets, DoNotIncludeValuesOfOtherKeys)
{
    start();
    for (const char *key : public_keys)
        set(key, "3");
    for (const auto &line : events())
        EXPECT_EQ(line["value"], "3") << line;
}

} // namespace
