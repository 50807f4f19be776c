// Why a call or a command failed: an exit status, a message and what to do about it.
#ifndef CLIENT_FAILURE_H
#define CLIENT_FAILURE_H

#include "json_fwd.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace client
{

enum class Exit {
    done,
    other,
    usage,
    no_answer,
    refused,
    invalid,
    no_file,
    profile_busy,
    not_ready,
};

constexpr const char *name_of(Exit status)
{
    constexpr const char *names[]{"done",    "other",        "usage",        "no_answer", "refused",
                                  "invalid", "file_missing", "profile_busy", "not_ready"};
    return names[static_cast<int>(status)];
}

// `details` are further members of the error object of --json, for example the attempts left.
class Failure : public std::runtime_error
{
public:
    Failure(Exit status, const std::string &message, std::string hint = {});
    Failure(Exit status, const std::string &message, std::string hint, const Json &details);

    Exit status() const { return status_; }
    const std::string &hint() const { return hint_; }
    const Json &details() const { return *details_; }

private:
    Exit status_;
    std::string hint_;
    std::shared_ptr<const Json> details_;
};

// A signal that ends the program arrived while it waited.
struct Interrupted {
    int signal;
    const char *consequence = "If the request was still queued, it was withdrawn.";
};

} // namespace client

#endif
