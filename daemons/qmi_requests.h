// The requests of the QMI channel: what their records hold and what the modem does about them.
#ifndef DAEMONS_QMI_REQUESTS_H
#define DAEMONS_QMI_REQUESTS_H

#include "modems/simulated/modem.h"

#include <string>
#include <string_view>
#include <variant>

namespace sim
{

enum class SimIndex : int { absent, not_ready, ready, pin, puk, network_personalization, bad };

// At the start of a reply: a number, or text with its end.
using QmiAnswer = std::variant<RetCode, SimIndex, std::string>;

struct QmiRequest {
    long code;
    const char *name;
    // Gets the payload as it came, of any size. None for a request that is never answered.
    QmiAnswer (*handle)(ModemState &, std::string_view payload);
    // The arguments, secret ones masked, for people to read; none without arguments.
    std::string (*describe)(std::string_view payload) = nullptr;
};

// The row of a request code, or nullptr.
const QmiRequest *find_qmi_request(long code);

} // namespace sim

#endif
