// The simulated modem as a modem with AT ports.
#ifndef MODEMS_AT_FRONT_FRONT_H
#define MODEMS_AT_FRONT_FRONT_H

#include "port.h"

#include <memory>
#include <string>
#include <vector>

namespace at_front
{

class Front
{
public:
    // All that is referred to must outlive this. Throws std::system_error.
    Front(simulated::Modem &modem, AnswerFaults &answer_faults, Wires ports,
          std::string model = ModemState::hardware);
    ~Front();
    Front(const Front &) = delete;
    Front &operator=(const Front &) = delete;

    std::vector<std::string> paths() const;

private:
    Device device_;
    std::vector<std::unique_ptr<Port>> ports_;
};

} // namespace at_front

#endif
