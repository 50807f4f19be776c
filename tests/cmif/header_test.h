/* What header_test.c passes to header_test.cpp. */
#ifndef TESTS_CMIF_HEADER_TEST_H
#define TESTS_CMIF_HEADER_TEST_H

#ifdef __cplusplus
extern "C" {
#endif

enum { record_count = 6, result_count = 9 };

extern const unsigned sizes_in_c[record_count];
extern const int results_in_c[result_count];
int call_from_c(char *imei);
int call_with_a_profile(void);

#ifdef __cplusplus
}
#endif

#endif
