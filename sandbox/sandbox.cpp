#include "sandbox.h"

#include "check.h"
#include "interrupts.h"
#include "isolated.h"
#include "unisolated.h"

#include <cstdio>
#include <cstdlib>

namespace sandbox
{
namespace
{

std::string chosen_kind()
{
    const char *variable = std::getenv(sandbox_variable);
    return variable ? variable : "";
}

} // namespace

int run_in_sandbox(const Work &work, const std::vector<std::string> &visible_paths)
{
    std::fflush(nullptr); // else every child would write what is pending too
    const InterruptsIgnored interrupts;
    const std::string setting = chosen_kind();
    if (setting == lock_is_held)
        return run_unisolated(work, interrupts, Lock::inherited);

    std::string refusal = std::string(sandbox_variable) + "=" + no_namespaces;
    if (setting != no_namespaces) {
        const auto status = run_isolated(work, visible_paths, interrupts, refusal);
        if (status)
            return *status;
    }
    log_line("no namespaces (" + refusal + "): sharing this system's queues, one run at a time");
    return run_unisolated(work, interrupts, Lock::take);
}

bool shares_namespaces()
{
    return chosen_kind() == lock_is_held;
}

} // namespace sandbox
