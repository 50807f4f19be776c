// The SIM card: two PINs with their PUKs and retry counters, as a card keeps them.
#ifndef MODEMS_SIMULATED_SIM_CARD_H
#define MODEMS_SIMULATED_SIM_CARD_H

#include "daemons/cme_error.h"

#include <string>
#include <string_view>

namespace simulated
{

using daemons::CmeError;

// One PIN and the PUK that unblocks it. A malformed code is refused before the card sees it and
// uses up no attempt. After three wrong PINs in a row only the PUK helps; ten wrong PUKs block the
// card permanently.
class Pin
{
public:
    static constexpr int max_attempts = 3;
    static constexpr int max_puk_attempts = 10;

    Pin(std::string pin, std::string puk) : pin_(std::move(pin)), puk_(std::move(puk)) {}

    CmeError verify(std::string_view pin);
    CmeError change(std::string_view old_pin, std::string_view new_pin);
    CmeError set_enabled(bool enabled, std::string_view pin);

    // Works at any time, blocked or not; leaves the PIN enabled and verified.
    CmeError unblock(std::string_view puk, std::string_view new_pin);

    // Forgets the verification and nothing else.
    void power_cycle() { verified_ = false; }

    // What a test bench does to a card: it needs no code.
    void set_attempts(int attempts);
    void set_puk_attempts(int attempts) { puk_attempts_ = attempts; }
    void restore(); // all attempts
    void open();    // all attempts, and verified
    void require(); // all attempts, and to be entered

    bool enabled() const { return enabled_; }
    bool puk_required() const { return attempts_ == 0; }
    bool permanently_blocked() const { return puk_attempts_ == 0; }
    bool unlocked() const
    {
        return !puk_required() && !permanently_blocked() && (verified_ || !enabled_);
    }
    int attempts() const { return attempts_; }
    int puk_attempts() const { return puk_attempts_; }

private:
    CmeError refusal() const;
    CmeError compare(std::string_view pin);

    std::string pin_;
    std::string puk_;
    int attempts_ = max_attempts;
    int puk_attempts_ = max_puk_attempts;
    bool enabled_ = true;
    bool verified_ = false;
};

struct SimIdentity {
    const char *iccid, *imsi, *subscriber_number, *home_network;
};
inline constexpr SimIdentity first_sim{"8900101123456789016", "001010123456789", "+12025550100",
                                       "00101"};
inline constexpr SimIdentity other_sim{"8900102987654321015", "001020987654321", "+12025550199",
                                       "00102"};

struct SimCard {
    SimIdentity identity = first_sim;
    Pin pin1{"1234", "12345678"};
    Pin pin2{"5678", "87654321"};

    void power_cycle();
};

} // namespace simulated

#endif
