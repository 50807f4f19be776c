#include "sim_card.h"

#include "daemons/digits.h"

namespace simulated
{

using namespace daemons;

CmeError Pin::refusal() const
{
    if (permanently_blocked())
        return CmeError::sim_failure;
    return puk_required() ? CmeError::sim_puk_required : CmeError::ok;
}

// A right PIN restores all attempts. The last wrong one locks what an earlier right one unlocked.
CmeError Pin::compare(std::string_view pin)
{
    if (pin == pin_) {
        attempts_ = max_attempts;
        verified_ = true;
        return CmeError::ok;
    }
    if (--attempts_ > 0)
        return CmeError::incorrect_password;
    verified_ = false;
    return CmeError::sim_puk_required;
}

CmeError Pin::verify(std::string_view pin)
{
    if (const CmeError error = refusal(); error != CmeError::ok)
        return error;
    if (!enabled_)
        return CmeError::not_allowed;
    return is_pin(pin) ? compare(pin) : CmeError::incorrect_parameters;
}

CmeError Pin::change(std::string_view old_pin, std::string_view new_pin)
{
    if (const CmeError error = refusal(); error != CmeError::ok)
        return error;
    if (!enabled_)
        return CmeError::not_allowed;
    if (!is_pin(old_pin) || !is_pin(new_pin))
        return CmeError::incorrect_parameters;
    const CmeError error = compare(old_pin);
    if (error == CmeError::ok)
        pin_ = new_pin;
    return error;
}

CmeError Pin::set_enabled(bool enabled, std::string_view pin)
{
    if (const CmeError error = refusal(); error != CmeError::ok)
        return error;
    if (enabled == enabled_)
        return CmeError::not_allowed;
    if (!is_pin(pin))
        return CmeError::incorrect_parameters;
    const CmeError error = compare(pin);
    if (error == CmeError::ok)
        enabled_ = enabled;
    return error;
}

CmeError Pin::unblock(std::string_view puk, std::string_view new_pin)
{
    if (permanently_blocked())
        return CmeError::sim_failure;
    if (!is_puk(puk) || !is_pin(new_pin))
        return CmeError::incorrect_parameters;
    if (puk != puk_)
        return --puk_attempts_ > 0 ? CmeError::incorrect_password : CmeError::sim_failure;
    pin_ = new_pin;
    attempts_ = max_attempts;
    puk_attempts_ = max_puk_attempts;
    enabled_ = true;
    verified_ = true;
    return CmeError::ok;
}

// Without an attempt left, what an earlier right PIN unlocked is locked.
void Pin::set_attempts(int attempts)
{
    attempts_ = attempts;
    verified_ = verified_ && attempts > 0;
}

void Pin::restore()
{
    attempts_ = max_attempts;
    puk_attempts_ = max_puk_attempts;
}

void Pin::open()
{
    restore();
    verified_ = true;
}

void Pin::require()
{
    restore();
    enabled_ = true;
    verified_ = false;
}

void SimCard::power_cycle()
{
    pin1.power_cycle();
    pin2.power_cycle();
}

} // namespace simulated
