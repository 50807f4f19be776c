#include "record_members.h"

#include "cmif/cmif.h"
#include "daemons/at_record.h"
#include "daemons/cme_error.h"
#include "daemons/qmi_record.h"
#include "daemons/qmi_requests.h"

#include <algorithm>
#include <cstring>

namespace cmif_record
{
namespace
{

using Key = std::optional<StandInKey>;

constexpr const char *user_field = "user", *password_field = "password";
constexpr std::size_t at_text_size = CMIF_AT_PAYLOAD - sizeof(int);

std::string hidden(std::string_view text, const Key &key)
{
    return key ? stand_in(*key, text) : std::string(text);
}

bool is_zero(std::string_view bytes)
{
    return bytes.find_first_not_of('\0') == std::string_view::npos;
}

std::optional<int> number_at(std::string_view bytes, std::size_t offset)
{
    int number = 0;
    if (bytes.size() < offset + sizeof number)
        return std::nullopt;
    std::memcpy(&number, bytes.data() + offset, sizeof number);
    return number;
}

// All of a record whose fields do not tell everything. Any of it may be part of a secret, but for
// an end that is known to be a number.
void add_payload(JsonLine &line, std::string_view bytes, const Key &key, std::size_t number = 0)
{
    const std::size_t text = bytes.size() - number;
    line.add_hex("payload", hidden(bytes.substr(0, text), key).append(bytes.substr(text)));
}

// No text of more than one character looks like such a number.
bool is_small(int number)
{
    return number > -1000 && number < 1000;
}

// --- AT ---

struct AtSlot {
    std::size_t offset, size;
};

AtSlot slot_of(daemons::AtFieldSlot slot)
{
    constexpr std::size_t start = offsetof(cmif_msg, set_string);
    switch (slot) {
    case daemons::AtFieldSlot::string2:
        return {offsetof(cmif_msg, set_string2) - start, sizeof cmif_msg::set_string2};
    case daemons::AtFieldSlot::string3:
        return {offsetof(cmif_msg, set_string3) - start, sizeof cmif_msg::set_string3};
    case daemons::AtFieldSlot::value:
        return {offsetof(cmif_msg, set_value) - start, sizeof cmif_msg::set_value};
    case daemons::AtFieldSlot::first_byte:
        return {0, 1};
    default:
        return {0, sizeof cmif_msg::set_string};
    }
}

// Adds the fields of the form, and takes their bytes out of `rest`: what stays is not told.
void add_at_field(JsonLine &line, const daemons::AtField &field, const std::string &text,
                  std::string &rest, const Key &key)
{
    const AtSlot slot = slot_of(field.slot);
    if (field.slot == daemons::AtFieldSlot::first_byte) {
        line.add(field.label, static_cast<unsigned char>(rest[0]));
        rest[0] = '\0';
        return;
    }
    line.add(field.label, field.secret ? hidden(text, key) : text);
    std::fill_n(rest.begin() + static_cast<std::ptrdiff_t>(slot.offset), text.size(), '\0');
}

void add_at_request(JsonLine &line, const daemons::AtForm *form, std::string_view payload,
                    const Key &key)
{
    std::string rest(payload);
    line.open("fields");
    if (form && payload.size() == CMIF_AT_PAYLOAD) {
        cmif_msg record{};
        std::memcpy(record.set_string, payload.data(), payload.size());
        const auto arguments = daemons::decode(*form, record);
        for (std::size_t i = 0; arguments && i < arguments->size(); ++i)
            add_at_field(line, form->fields[i], (*arguments)[i], rest, key);
    }
    line.close();
    if (!is_zero(rest) || payload.size() != CMIF_AT_PAYLOAD)
        add_payload(line, payload, key);
}

void add_at_reply(JsonLine &line, std::string_view payload, const Key &key)
{
    const std::optional<int> code = number_at(payload, at_text_size);
    line.open("fields");
    if (code) {
        const daemons::CmeErrorText *error = daemons::find_cme_error(*code);
        line.add("ret_code", *code);
        if (error)
            line.add("result", error->name);
        else
            line.add_null("result");
    }
    line.close();
    if (payload.size() != CMIF_AT_PAYLOAD)
        add_payload(line, payload, key);
    else if (!is_zero(payload.substr(0, at_text_size)))
        add_payload(line, payload, key, sizeof *code);
}

// --- QMI ---

template <std::size_t size>
void put(char (&field)[size], const std::string &text)
{
    std::memcpy(field, text.data(), std::min(size, text.size()));
}

template <class Enumeration>
int number_of(Enumeration value)
{
    return static_cast<int>(value);
}

std::string encoded(const daemons::DataProfile &profile)
{
    qmi_profile_payload wire{};
    put(wire.apn, profile.apn);
    put(wire.user, profile.user);
    put(wire.password, profile.password);
    put(wire.auth, std::to_string(number_of(profile.authentication)));
    put(wire.pdp, std::to_string(number_of(profile.pdp_type)));
    put(wire.curIpFamily, std::to_string(number_of(profile.family)));
    std::string bytes(sizeof wire, '\0');
    std::memcpy(bytes.data(), &wire, sizeof wire);
    return bytes;
}

void add_profile(JsonLine &line, const daemons::DataProfile &profile, const Key &key)
{
    line.add("apn", profile.apn);
    line.add(user_field, hidden(profile.user, key));
    line.add(password_field, hidden(profile.password, key));
    line.add("auth", number_of(profile.authentication));
    line.add("pdp", number_of(profile.pdp_type));
    line.add("family", number_of(profile.family));
}

void add_qmi_request(JsonLine &line, long code, std::string_view payload, const Key &key)
{
    std::optional<daemons::DataProfile> profile;
    if (code == CMIF_QMI_MODIFY_PROFILE)
        profile = daemons::decode_profile(payload);
    const bool told = profile ? encoded(*profile) == payload : is_zero(payload);
    line.open("fields");
    if (profile)
        add_profile(line, *profile, key);
    line.close();
    if (!told)
        add_payload(line, payload, key);
}

bool is_text_reply(long code)
{
    return code == CMIF_QMI_GET_DEVICE_REVISION || code == CMIF_QMI_GET_PACKET_SERVICE;
}

void add_qmi_reply(JsonLine &line, long code, std::string_view payload, const Key &key)
{
    const std::string_view text = payload.substr(0, payload.find('\0'));
    const std::optional<int> number = number_at(payload, 0);
    bool told = payload.empty();
    line.open("fields");
    if (is_text_reply(code)) {
        line.add("text", text);
        told = is_zero(payload.substr(text.size()));
    } else if (number && is_small(*number)) {
        line.add(code == CMIF_QMI_GET_SIM_STATUS ? "status" : "number", *number);
        told = is_zero(payload.substr(sizeof *number));
    }
    line.close();
    if (!told)
        add_payload(line, payload, key);
}

} // namespace

void add_record(JsonLine &line, Queue queue, const Record &record, const Key &key)
{
    const bool at = queue.channel == Channel::at;
    const daemons::AtForm *form = at ? daemons::find_at_form(record.code) : nullptr;
    const daemons::QmiRequest *request = at ? nullptr : daemons::find_qmi_request(record.code);
    const char *name = form ? form->name : request ? request->name : nullptr;
    line.add("code", record.code);
    if (name)
        line.add("name", name);
    else
        line.add_null("name");
    line.add("size", static_cast<long long>(record.payload.size()));
    if (at && queue.direction == Direction::request)
        add_at_request(line, form, record.payload, key);
    else if (at)
        add_at_reply(line, record.payload, key);
    else if (queue.direction == Direction::request)
        add_qmi_request(line, record.code, record.payload, key);
    else
        add_qmi_reply(line, record.code, record.payload, key);
}

bool is_secret_field(Channel channel, long code, std::string_view name)
{
    if (channel == Channel::qmi)
        return name == user_field || name == password_field;
    const daemons::AtForm *form = daemons::find_at_form(code);
    return form && std::any_of(std::begin(form->fields), std::end(form->fields),
                               [name](const daemons::AtField &field) {
                                   return field.secret && field.label == name;
                               });
}

} // namespace cmif_record
