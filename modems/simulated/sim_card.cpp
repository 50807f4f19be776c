#include "sim_card.h"

#include "daemons/digits.h"

namespace sim
{

using namespace daemons;

RetCode Pin::refusal() const
{
    if (dead())
        return ret_sim_failure;
    return blocked() ? ret_sim_puk_required : ret_ok;
}

// A right PIN gives all tries back. The last wrong one takes back what an earlier right one opened.
RetCode Pin::compare(std::string_view pin)
{
    if (pin == pin_) {
        tries_ = most_tries;
        verified_ = true;
        return ret_ok;
    }
    if (--tries_ > 0)
        return ret_incorrect_password;
    verified_ = false;
    return ret_sim_puk_required;
}

RetCode Pin::verify(std::string_view pin)
{
    if (const RetCode code = refusal())
        return code;
    if (!enabled_)
        return ret_not_allowed;
    return is_pin(pin) ? compare(pin) : ret_incorrect_parameters;
}

RetCode Pin::change(std::string_view old_pin, std::string_view new_pin)
{
    if (const RetCode code = refusal())
        return code;
    if (!enabled_)
        return ret_not_allowed;
    if (!is_pin(old_pin) || !is_pin(new_pin))
        return ret_incorrect_parameters;
    const RetCode code = compare(old_pin);
    if (code == ret_ok)
        pin_ = new_pin;
    return code;
}

RetCode Pin::set_enabled(bool enabled, std::string_view pin)
{
    if (const RetCode code = refusal())
        return code;
    if (enabled == enabled_)
        return ret_not_allowed;
    if (!is_pin(pin))
        return ret_incorrect_parameters;
    const RetCode code = compare(pin);
    if (code == ret_ok)
        enabled_ = enabled;
    return code;
}

RetCode Pin::unblock(std::string_view puk, std::string_view new_pin)
{
    if (dead())
        return ret_sim_failure;
    if (!is_puk(puk) || !is_pin(new_pin))
        return ret_incorrect_parameters;
    if (puk != puk_)
        return --puk_tries_ > 0 ? ret_incorrect_password : ret_sim_failure;
    pin_ = new_pin;
    tries_ = most_tries;
    puk_tries_ = most_puk_tries;
    enabled_ = true;
    verified_ = true;
    return ret_ok;
}

void SimCard::power_cycle()
{
    pin1.power_cycle();
    pin2.power_cycle();
}

} // namespace sim
