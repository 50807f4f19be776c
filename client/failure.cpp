#include "failure.h"

#include "json.h"

#include <utility>

namespace client
{

Failure::Failure(Exit status, const std::string &message, std::string hint)
    : Failure(status, message, std::move(hint), Json::object())
{
}

Failure::Failure(Exit status, const std::string &message, std::string hint, const Json &details)
    : std::runtime_error(message), status_(status), hint_(std::move(hint)),
      details_(std::make_shared<Json>(details))
{
}

} // namespace client
