// The requests of the QMI channel: what their records hold, and what they ask the modem.
#ifndef DAEMONS_QMI_REQUESTS_H
#define DAEMONS_QMI_REQUESTS_H

#include "modem.h"
#include "qmi_forms.h"

#include <string>
#include <string_view>
#include <variant>

namespace daemons
{

enum class QmiSimStatus : int {
    absent,
    not_ready,
    ready,
    pin_required,
    puk_required,
    network_locked,
    permanently_blocked
};

// At the start of a reply: a number, or text with its NUL.
using QmiAnswer = std::variant<CmeError, QmiSimStatus, std::string>;

struct QmiRequest : QmiForm {
    // Gets the payload as it came, of any size. None for a request that is never answered.
    QmiAnswer (*verb)(Modem &, std::string_view payload);
    // The arguments, secret ones masked, for a person to read; none without arguments.
    std::string (*describe)(std::string_view payload) = nullptr;
};

// The row of a request code, or nullptr.
const QmiRequest *find_qmi_request(long code);

} // namespace daemons

#endif
