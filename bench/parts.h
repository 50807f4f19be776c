// What cmif-bench measures. Each part prints its figures.
#ifndef BENCH_PARTS_H
#define BENCH_PARTS_H

namespace bench
{

void against_by_hand(); // the library against the same work written by hand, each with its bar
void growth();          // how cost grows: callers, foreign replies, messages, keys
void callers();         // the first of these
bool against_peers();   // other ways to ask a process; false if one that is built fails

} // namespace bench

#endif
