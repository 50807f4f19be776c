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

} // namespace

Section &Report::section(const std::string &key)
{
    for (Section &section : sections_)
        if (section.key == key)
            return section;
    return sections_.emplace_back(Section{key, {}});
}

void Report::field(const std::string &section_key, Field field)
{
    section(section_key).fields.push_back(std::move(field));
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
            object[program_key(field)] = field.value;
    }
    for (const Table &table : tables_)
        document[table.key] = table.rows;
    document.update(data_);
    return document;
}

} // namespace cmifctl
