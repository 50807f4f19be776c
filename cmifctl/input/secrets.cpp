#include "secrets.h"

#include "client/failure.h"
#include "daemons/digits.h"
#include "questions.h"

namespace cmifctl
{
namespace
{

using client::Exit;
using client::Failure;

bool is_control_key(std::string_view text)
{
    return daemons::is_digits(text, 1, 29);
}

void check_secret(const std::string &text, const SecretForm &form)
{
    if (!form.valid(text))
        throw Failure(Exit::invalid, std::string("not a valid ") + form.name + "; nothing was sent",
                      std::string("A ") + form.name + " has " + form.digits + " and nothing else.");
}

} // namespace

const SecretForm pin_form{"PIN", daemons::is_pin, "4 to 8 digits"};
const SecretForm new_pin_form{"new PIN", daemons::is_pin, "4 to 8 digits", true};
const SecretForm puk_form{"PUK", daemons::is_puk, "8 digits"};
const SecretForm control_key_form{"control key", is_control_key, "1 to 29 digits"};

std::vector<std::string> ask_for(const std::vector<SecretForm> &forms, bool from_input)
{
    std::vector<Question> questions;
    questions.reserve(forms.size());
    for (const SecretForm &form : forms)
        questions.push_back({form.name, form.twice});
    std::vector<std::string> answers = ask_secrets(questions, from_input);
    for (std::size_t i = 0; i < forms.size(); ++i)
        check_secret(answers[i], forms[i]);
    return answers;
}

} // namespace cmifctl
