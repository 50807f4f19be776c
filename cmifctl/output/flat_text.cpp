#include "flat_text.h"

#include "cli/numbers.h"
#include "client/json.h"
#include "json_text.h"
#include "terminal_text.h"

#include <algorithm>
#include <functional>

namespace cmifctl
{
namespace
{

using client::Json;
using Each = std::function<void(const std::string &path, const Json &value)>;

// Every value that is neither an object nor an array, in the document's order.
void walk(const Json &value, const std::string &path, const Each &each)
{
    if (!value.is_structured())
        return each(path, value);
    const std::string start = path.empty() ? "" : path + ".";
    for (const auto &[key, member] : value.items())
        walk(member, std::string(start).append(key), each);
}

std::string one_line(const Json &value)
{
    if (value.is_null())
        return "";
    if (value.is_string())
        return escape_line(value.get_ref<const std::string &>());
    if (value.is_object() && value.contains("code") && value.contains("name"))
        return one_line(value["name"].is_null() ? value["code"] : value["name"]);
    std::string text = render_json(value, Layout::one_line);
    text.pop_back(); // its line end
    return text;
}

const Json *member(const Json &value, const std::string &key)
{
    if (value.is_object())
        return value.contains(key) ? &value[key] : nullptr;
    const auto index = cli::whole_number(key);
    const bool inside =
        value.is_array() && index && *index >= 0 && static_cast<std::size_t>(*index) < value.size();
    return inside ? &value[static_cast<std::size_t>(*index)] : nullptr;
}

const Json *find(const Json &document, const std::string &path)
{
    const Json *found = &document;
    for (std::size_t start = 0; found != nullptr && start <= path.size();) {
        const std::size_t end = std::min(path.find('.', start), path.size());
        found = member(*found, path.substr(start, end - start));
        start = end + 1;
    }
    return found;
}

[[noreturn]] void fail_unknown(const Json &document, const std::string &path)
{
    std::string known;
    walk(document, "", [&known](const std::string &each, const Json &) {
        known.append(known.empty() ? "" : ", ").append(each);
    });
    throw client::Failure(client::Exit::usage, "unknown field '" + path + "'",
                          "There is: " + known + ".");
}

} // namespace

std::string render_keyvalue(const Json &document)
{
    std::string out;
    walk(document, "", [&out](const std::string &path, const Json &value) {
        if (!value.is_null())
            out.append(path).append(": ").append(one_line(value)).append("\n");
    });
    return out;
}

std::string render_fields(const Json &document, const std::vector<std::string> &paths)
{
    std::string out;
    for (const std::string &path : paths) {
        const Json *value = find(document, path);
        if (value == nullptr)
            fail_unknown(document, path);
        out += one_line(*value) + "\n";
    }
    return out;
}

} // namespace cmifctl
