#include "command_line.h"

#include <cctype>

namespace at_front
{
namespace
{

char upper(char c)
{
    return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
}
bool is_digit(char c)
{
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}
bool is_letter(char c)
{
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

std::string without_spaces(std::string_view line)
{
    std::string text;
    bool quoted = false;
    for (const char c : line) {
        quoted = quoted != (c == '"');
        if (quoted || c != ' ')
            text += c;
    }
    return text;
}

// Takes characters off the front of a line.
class Reader
{
public:
    explicit Reader(std::string_view rest) : rest_(rest) {}

    bool at_end() const { return rest_.empty(); }
    char next() const { return at_end() ? '\0' : rest_.front(); }
    char take()
    {
        const char c = next();
        rest_.remove_prefix(1);
        return c;
    }
    template <typename Belongs>
    std::string take_while(Belongs belongs)
    {
        std::string text;
        while (!at_end() && belongs(next()))
            text += take();
        return text;
    }
    bool take_if(char c)
    {
        if (next() != c)
            return false;
        take();
        return true;
    }
    // Up to the semicolon that ends a command; one in quoted text doesn't.
    std::string take_arguments()
    {
        bool quoted = false;
        return take_while([&quoted](char c) {
            quoted = quoted != (c == '"');
            return quoted || c != ';';
        });
    }

private:
    std::string_view rest_;
};

void take_form(Reader &line, Request &request)
{
    if (line.take_if('?')) {
        request.form = Form::read;
        return;
    }
    if (!line.take_if('='))
        return;
    request.arguments = line.take_arguments();
    request.form = request.arguments == "?" ? Form::test : Form::set;
}

Request take_extended(Reader &line)
{
    Request request{std::string(1, line.take())};
    for (const char c : line.take_while([](char c) { return c != '=' && c != '?' && c != ';'; }))
        request.name += upper(c);
    take_form(line, request);
    return request;
}

// "E0", "&C1", "S0=1", "S3?"; a dial string runs to the end of the line or to a semicolon.
Request take_basic(Reader &line)
{
    Request request;
    if (line.next() == '&')
        request.name += line.take();
    request.name += upper(line.take());
    if (request.name == "D") {
        request.arguments = line.take_arguments();
        return request;
    }
    if (request.name != "S") {
        request.arguments = line.take_while(is_digit);
        return request;
    }
    request.name += line.take_while(is_digit);
    if (line.take_if('?'))
        request.form = Form::read;
    if (line.take_if('=')) {
        request.form = Form::set;
        request.arguments = line.take_while(is_digit);
    }
    return request;
}

} // namespace

std::optional<std::vector<Request>> parse_line(std::string_view line)
{
    const std::string text = without_spaces(line);
    Reader reader(text);
    std::vector<Request> requests;
    while (!reader.at_end()) {
        if (reader.take_if(';'))
            continue;
        const char c = reader.next();
        if (std::string_view("+*^%$").find(c) != std::string_view::npos) {
            requests.push_back(take_extended(reader));
            if (!reader.at_end() && reader.next() != ';')
                return std::nullopt;
        } else if (is_letter(c) || c == '&') {
            requests.push_back(take_basic(reader));
        } else {
            return std::nullopt;
        }
    }
    return requests;
}

} // namespace at_front
