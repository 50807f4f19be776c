#ifndef BENCH_QMI_BY_HAND_H
#define BENCH_QMI_BY_HAND_H

namespace bench
{

// What shared_CMIF_get_device_rev_id does, with as many log lines of about the same length.
void qmi_exchange_by_hand(bool log);

} // namespace bench

#endif
