// What the daemons answer, in numbers of the tests' own.
#ifndef TESTS_SUPPORT_ANSWERS_H
#define TESTS_SUPPORT_ANSWERS_H

namespace answer
{

inline constexpr int ok = 0;
inline constexpr int sim_pin_required = 11;
inline constexpr int sim_puk_required = 12;
inline constexpr int sim_failure = 13;
inline constexpr int incorrect_password = 16;
inline constexpr int invalid_index = 21;
inline constexpr int no_network_service = 30;
inline constexpr int network_not_allowed = 32;
inline constexpr int network_pin_required = 40;
inline constexpr int incorrect_parameters = 50;
inline constexpr int missing_apn = 127;
inline constexpr int not_allowed = 203;
inline constexpr int not_supported = 204;
inline constexpr int file_not_written = 220;
inline constexpr int search_running = 221;

} // namespace answer

#endif
