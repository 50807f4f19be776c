#include "run_lines.h"

#include <exception>
#include <sstream>

namespace cmif_sim
{

Answer run_lines(const scenario::Commands &commands, const std::string &lines)
{
    std::vector<scenario::Action> actions;
    std::string errors;
    std::istringstream input(lines);
    for (std::string line; std::getline(input, line);) {
        try {
            scenario::Words words(line);
            actions.push_back(scenario::parse_command(commands, words));
        } catch (const scenario::ScriptError &error) {
            actions.emplace_back();
            errors += std::to_string(actions.size()) + ":" + std::to_string(error.column()) + ": " +
                      error.what() + "\n";
        }
    }
    if (!errors.empty())
        return {2, errors};
    for (std::size_t i = 0; i < actions.size(); ++i)
        try {
            actions[i]();
        } catch (const std::exception &error) {
            return {1, std::to_string(i + 1) + ": " + error.what() + "\n"};
        }
    return {};
}

} // namespace cmif_sim
