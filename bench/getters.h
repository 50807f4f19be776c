// Ten plain getters in turn: how long the search for one key takes depends on the processor's
// guesses about its way through the store.
#ifndef BENCH_GETTERS_H
#define BENCH_GETTERS_H

namespace bench
{

constexpr int getter_count = 10;

void set_getter_keys(); // in both stores
void get_all();
void get_all_by_hand();

} // namespace bench

#endif
