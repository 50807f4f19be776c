// What a verb found, once for both readers: aligned text for people, one JSON document for
// programs.
#ifndef CMIFCTL_OUTPUT_REPORT_H
#define CMIFCTL_OUTPUT_REPORT_H

#include "client/failure.h"

#include <string>
#include <vector>

namespace cmifctl
{

// `unit` follows the value for people ("-71 dBm") and the key for programs ("rssi_dbm").
// `text`, when there is one, is what people see in place of the value.
struct Field {
    std::string key;
    Json value;
    std::string unit{};
    std::string text{};
    bool hidden = false; // from people, who see it elsewhere
};

struct Section {
    std::string key;
    std::vector<Field> fields;
};

// A row is an object with at least the members that the columns name.
struct Column {
    std::string key;
    std::string title;
};

struct Table {
    std::string key;
    std::vector<Column> columns; // the last one shrinks to the terminal's width
    Json rows;
    std::vector<Json> shown{}; // for each row, members that people see in place of its own
};

class Report
{
public:
    // The section of that name, made when it's the first time.
    Section &section(const std::string &key);
    void field(const std::string &key, Field field);
    void table(Table table) { tables_.push_back(std::move(table)); }
    // A line that people see as it is, but for what would act on a terminal.
    void line(const std::string &text);
    // Text of the tool's own making: a script, a page of the manual.
    void text(const std::string &key, const std::string &text);
    // A member of the document that people see in another form.
    void data(const std::string &key, Json value) { data_[key] = std::move(value); }

    Json document() const;
    const std::vector<Section> &sections() const { return sections_; }
    const std::vector<Table> &tables() const { return tables_; }
    const std::string &text() const { return text_; }

private:
    std::vector<Section> sections_;
    std::vector<Table> tables_;
    Json data_ = Json::object();
    std::string text_;
};

// Valid JSON whatever bytes the strings hold, and a newline.
std::string printed(const Json &document);

} // namespace cmifctl

#endif
