#include "sim_files.h"

namespace at_front
{
namespace
{

constexpr int card_identity = 0x2fe2, administrative_data = 0x6fad;

// Two digits in a byte, the first one low; F fills the last one.
std::string swapped(std::string digits)
{
    if (digits.size() % 2 != 0)
        digits += 'F';
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        std::swap(digits[i], digits[i + 1]);
    return digits;
}

} // namespace

std::string sim_file(int number, const simulated::SimIdentity &identity)
{
    switch (number) {
    case card_identity:
        return swapped(identity.iccid);
    case administrative_data:
        return "00000002"; // normal operation; two digits of the network code
    default:
        return "";
    }
}

} // namespace at_front
