// What is wrong in a command line or a scenario file, and where.
#ifndef SCENARIO_SCRIPT_ERROR_H
#define SCENARIO_SCRIPT_ERROR_H

#include <cstddef>
#include <stdexcept>
#include <string>

namespace scenario
{

// what() says what is wrong and what is allowed there. Lines and columns are counted from 1.
class ScriptError : public std::runtime_error
{
public:
    ScriptError(std::size_t column, const std::string &message)
        : std::runtime_error(message), column_(column)
    {
    }

    std::size_t column() const { return column_; }

private:
    std::size_t column_;
};

} // namespace scenario

#endif
