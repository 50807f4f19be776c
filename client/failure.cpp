#include "failure.h"

#include <utility>

namespace client
{

Failure::Failure(Exit status, const std::string &message, std::string hint)
    : Failure(status, message, std::move(hint), Json::object())
{
}

Failure::Failure(Exit status, const std::string &message, std::string hint, Json details)
    : std::runtime_error(message), status_(status), hint_(std::move(hint)),
      details_(std::move(details))
{
}

// Not in the header: a Json in each file that throws doubles the time to compile it.
Failure::Failure(const Failure &) = default;
Failure::~Failure() = default;

} // namespace client
