#include "publisher.h"

#include "connection_keys.h"
#include "message_keys.h"
#include "provider_file.h"

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

void Publisher::publish()
{
    const std::lock_guard lock(mutex_);
    const ModemStatus status = modem_.status();
    publish_messages(status.messages);
    publish_connection(status);
    publish_status(status, operator_format_);
}

void Publisher::set_operator_format(OperatorFormat format)
{
    const std::lock_guard lock(mutex_);
    operator_format_ = format;
}

} // namespace daemons
