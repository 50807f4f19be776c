// The process that writes a recording: it takes what the recorded processes have put in the ring,
// decodes it, replaces secrets, and writes JSON Lines.
#ifndef CMIF_RECORD_WRITER_H
#define CMIF_RECORD_WRITER_H

#include "entry_line.h"

#include <sys/types.h>

namespace cmif_record
{

struct WriterFiles {
    int ring;        // opened for the writer alone, without a lock
    int ring_number; // by which other processes find it at the writer
    int lines;
};

// Starts it apart from this process: in a session of its own, not as a child, and without its
// standard files. It ends when no process has the ring any more, and all is written. The process's
// number; fails with std::system_error.
pid_t start_writer(const WriterFiles &files, const EntryLines &lines);

} // namespace cmif_record

#endif
