// The program cmif-sim, called as from a command line.
#ifndef TESTS_CMIF_SIM_SHELL_H
#define TESTS_CMIF_SIM_SHELL_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/msg.h>
#include <sys/wait.h>

inline constexpr const char *program = CMIF_SIM;
inline constexpr key_t at_request_queue = 899;
inline constexpr key_t qmi_request_queue = 1158;

struct Outcome {
    int status;
    std::string output, errors;
};

inline std::string contents(const char *path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Runs a line of the shell; $S in it is cmif-sim.
inline Outcome shell(const std::string &line)
{
    setenv("S", program, 1);
    const int status = std::system(("{ " + line + "; } >/tmp/output 2>/tmp/errors").c_str());
    return {WEXITSTATUS(status), contents("/tmp/output"), contents("/tmp/errors")};
}

inline bool contains(const std::string &text, const std::string &part)
{
    return text.find(part) != std::string::npos;
}

inline bool has_namespaces()
{
    return std::getenv("CMIF_SANDBOX") == nullptr;
}

#endif
