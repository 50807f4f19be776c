#include "front.h"

namespace at_front
{

Front::Front(simulated::Modem &modem, Mishaps &mishaps, std::size_t ports, std::string model)
    : device_(modem, mishaps, std::move(model))
{
    for (std::size_t i = 0; i < ports; ++i)
        ports_.push_back(std::make_unique<Port>(device_));
    device_.watch([this] {
        for (const auto &port : ports_)
            port->report();
    });
}

Front::~Front()
{
    device_.watch({});
    device_.stop();
}

std::vector<std::string> Front::paths() const
{
    std::vector<std::string> paths;
    for (const auto &port : ports_)
        paths.push_back(port->path());
    return paths;
}

} // namespace at_front
