// A JSON object on one line, member after member.
#ifndef CMIF_RECORD_JSON_LINE_H
#define CMIF_RECORD_JSON_LINE_H

#include <string>
#include <string_view>
#include <vector>

namespace cmif_record
{

class JsonLine
{
public:
    JsonLine();

    // Text that is not valid UTF-8 becomes an object {"hex": "..."}.
    void add(const char *name, std::string_view text);
    void add(const char *name, long long number);
    void add_null(const char *name);
    void add_literal(const char *name, std::string_view json); // as it stands
    void add_list(const char *name, const std::vector<std::string> &texts);
    void add_hex(const char *name, std::string_view bytes);
    void add_seconds(const char *name, long long nanoseconds); // with six decimal places

    void open(const char *name); // the members that follow belong to an object of this name
    void close();

    // With its newline; nothing can be added afterwards.
    const std::string &finish();

private:
    void start(const char *name);
    void append_text(std::string_view text);

    std::string text_;
};

bool is_utf8(std::string_view text);

} // namespace cmif_record

#endif
