#include "publisher.h"

#include "connection_keys.h"
#include "message_keys.h"
#include "provider_file.h"
#include "publish_value.h"

namespace daemons
{

// A list that is there already is an earlier modem's.
Publisher::Publisher(Modem &modem) : modem_(modem)
{
    remove_provider_file();
    prepare_wait_times();
    modem_.set_data_profile(stored_profile());
    modem_.watch([this] { publish(); });
    publish();
}

Publisher::~Publisher()
{
    modem_.watch({});
}

// A store that was deleted is left with the first write. What was compared with the old one before
// that is missing in the new one, and so is what is published at the start alone.
void Publisher::publish()
{
    const std::lock_guard lock(mutex_);
    const ModemStatus status = modem_.status();
    if (publish_all(status) && publish_all(status))
        prepare_wait_times();
}

// Whether anything was written.
bool Publisher::publish_all(const ModemStatus &status)
{
    const unsigned before = written_values;
    publish_messages(status.messages);
    publish_connection(status);
    publish_status(status, operator_format_);
    return written_values != before;
}

void Publisher::set_operator_format(OperatorFormat format)
{
    const std::lock_guard lock(mutex_);
    operator_format_ = format;
}

} // namespace daemons
