#include "report.h"

#include "terminal_text.h"

#include <cctype>
#include <utility>

namespace cmifctl
{
namespace
{

std::string program_key(const Field &field)
{
    std::string key = field.unit.empty() ? field.key : field.key + "_" + field.unit;
    for (char &letter : key)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return key;
}

// The member that "a.b" leads to, in an object that is made when it is missing.
Json &place(Json &object, const std::string &path)
{
    const std::size_t dot = path.find('.');
    return dot == std::string::npos ? object[path]
                                    : place(object[path.substr(0, dot)], path.substr(dot + 1));
}

} // namespace

Field coded(std::string key, EnumTable table, const Json &raw)
{
    return {.key = std::move(key),
            .value = enumeration(table, raw),
            .text = enumeration_text(table, raw)};
}

Section &Report::section(const std::string &key)
{
    for (Section &section : sections_)
        if (section.key == key)
            return section;
    return sections_.emplace_back(Section{key, {}});
}

void Report::field(const std::string &section_key, Field field)
{
    std::vector<Field> &fields = section(section_key).fields;
    for (Field &known : fields)
        if (known.key == field.key) {
            known = std::move(field);
            return;
        }
    fields.push_back(std::move(field));
}

void Report::result(const std::string &identifier, const std::string &text)
{
    data("result", identifier);
    line(text);
}

void Report::table(Table table)
{
    tables_.push_back(std::move(table));
}

void Report::data(const std::string &key, Json value)
{
    data_[key] = std::move(value);
}

void Report::line(const std::string &text)
{
    text_ += escape_controls(text) + "\n";
}

void Report::text(const std::string &key, const std::string &text)
{
    data_[key] = text;
    text_ += text;
}

Json Report::document() const
{
    Json document = Json::object();
    for (const Section &section : sections_) {
        Json &object = document[section.key] = Json::object();
        for (const Field &field : section.fields)
            place(object, program_key(field)) = field.value;
    }
    for (const Table &table : tables_)
        document[table.key] = table.rows;
    document.update(data_);
    return document;
}

} // namespace cmifctl
