// The numbers of this process and thread, without asking the system each time.
#ifndef CMIF_RECORD_OWN_NUMBERS_H
#define CMIF_RECORD_OWN_NUMBERS_H

namespace cmif_record
{

struct OwnNumbers {
    int process, thread;
};

OwnNumbers own_numbers();

} // namespace cmif_record

#endif
