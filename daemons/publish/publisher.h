// Keeps the configuration store in step with the modem.
#ifndef DAEMONS_PUBLISH_PUBLISHER_H
#define DAEMONS_PUBLISH_PUBLISHER_H

#include "daemons/modem.h"
#include "status_keys.h"

#include <mutex>

namespace daemons
{

class Publisher
{
public:
    // Gives the modem the data profile that was saved, publishes the modem's status, and from then
    // on every change of it.
    explicit Publisher(Modem &modem);
    ~Publisher();
    Publisher(const Publisher &) = delete;
    Publisher &operator=(const Publisher &) = delete;

    // Publishes the status as it is now. Any thread may call: the snapshot is taken under the lock,
    // so an older one never overwrites a newer one.
    void publish();

    void set_operator_format(OperatorFormat format); // shows with the next publish()

private:
    bool publish_all(const ModemStatus &status);

    Modem &modem_;
    std::mutex mutex_;
    OperatorFormat operator_format_ = OperatorFormat::long_name;
};

} // namespace daemons

#endif
