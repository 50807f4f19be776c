// The SIM card: two PINs with their PUKs and retry counters, as a card keeps them.
#ifndef MODEMS_SIMULATED_SIM_CARD_H
#define MODEMS_SIMULATED_SIM_CARD_H

#include "daemons/ret_code.h"

#include <string>
#include <string_view>

namespace sim
{

// One PIN and the PUK that unblocks it. A malformed code is refused before the card sees it and
// costs no try. After three wrong PINs in a row only the PUK helps, after ten wrong PUKs nothing.
class Pin
{
public:
    static constexpr int most_tries = 3;
    static constexpr int most_puk_tries = 10;

    Pin(std::string pin, std::string puk) : pin_(std::move(pin)), puk_(std::move(puk)) {}

    RetCode verify(std::string_view pin);
    RetCode change(std::string_view old_pin, std::string_view new_pin);
    RetCode set_enabled(bool enabled, std::string_view pin);

    // Works at any time, blocked or not; leaves the PIN enabled and verified.
    RetCode unblock(std::string_view puk, std::string_view new_pin);

    // Forgets the verification and nothing else.
    void power_cycle() { verified_ = false; }

    bool enabled() const { return enabled_; }
    bool blocked() const { return tries_ == 0; }
    bool dead() const { return puk_tries_ == 0; }
    bool open() const { return !blocked() && !dead() && (verified_ || !enabled_); }
    int tries() const { return tries_; }
    int puk_tries() const { return puk_tries_; }

private:
    RetCode refusal() const;
    RetCode compare(std::string_view pin);

    std::string pin_;
    std::string puk_;
    int tries_ = most_tries;
    int puk_tries_ = most_puk_tries;
    bool enabled_ = true;
    bool verified_ = false;
};

struct SimCard {
    Pin pin1{"1234", "12345678"};
    Pin pin2{"5678", "87654321"};

    static constexpr const char *iccid = "8900101123456789016";
    static constexpr const char *imsi = "001010123456789";
    static constexpr const char *subscriber_number = "+12025550100";
    static constexpr const char *home_network = "00101";

    void power_cycle();
};

} // namespace sim

#endif
