// The numbers of this process and thread, without asking the system each time.
#ifndef CMIF_RECORD_CURRENT_IDS_H
#define CMIF_RECORD_CURRENT_IDS_H

namespace cmif_record
{

struct CurrentIds {
    int process, thread;
};

CurrentIds current_ids();

} // namespace cmif_record

#endif
