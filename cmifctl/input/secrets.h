// The forms of the secrets that a SIM takes, and asking for them.
#ifndef CMIFCTL_INPUT_SECRETS_H
#define CMIFCTL_INPUT_SECRETS_H

#include <string>
#include <string_view>
#include <vector>

namespace cmifctl
{

struct SecretForm {
    const char *name;
    bool (*valid)(std::string_view);
    const char *digits; // for the hint: "4 to 8 digits"
    bool twice = false; // a typo would lock the user out
};

extern const SecretForm pin_form, new_pin_form, puk_form, control_key_form;

// Asks for the secrets, or reads them from standard input, then checks their form. Fails with exit
// 5 when one doesn't have it.
std::vector<std::string> ask_for(const std::vector<SecretForm> &forms, bool from_input);

} // namespace cmifctl

#endif
