#include "front.h"

namespace at_front
{

Front::Front(simulated::Modem &modem, AnswerFaults &answer_faults, Wires ports, std::string model)
    : device_(modem, answer_faults, std::move(model))
{
    for (std::unique_ptr<Wire> &wire : ports)
        ports_.push_back(std::make_unique<Port>(device_, std::move(wire)));
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
