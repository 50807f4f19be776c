#include "simulation.h"

#include "cmif-sim/faults/fault_command.h"
#include "modems/simulated/commands.h"
#include "scenario/real_clock.h"

#include <stdexcept>

namespace cmif_sim
{
namespace
{

using namespace scenario;

long long nanoseconds_of(Time time)
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(time.time_since_epoch()).count();
}

std::unique_ptr<Clock> make_clock(const ServerOptions &options)
{
    if (options.manual_clock)
        return std::make_unique<ManualClock>([record = options.record](Time time) {
            if (record)
                record->set_time(nanoseconds_of(time));
        });
    return std::make_unique<RealClock>(TimeScale(options.pace));
}

Commands scenario_commands(simulated::Modem &modem, FaultyLink &at, FaultyLink &qmi,
                           const ServerOptions &options)
{
    Commands commands = simulated::modem_commands(modem);
    if (options.store)
        commands.push_back(
            fault_command({options.at ? &at : nullptr, options.qmi ? &qmi : nullptr}));
    if (options.further_commands)
        for (Command &command : options.further_commands(modem))
            commands.push_back(std::move(command));
    return commands;
}

// Not in a scenario, which is itself carried out as time passes.
Command advance_command(Clock &clock)
{
    return {"advance", "DURATION", "let so much time pass (with --clock manual)",
            [&clock](Words &words) -> Action {
                auto *const manual = dynamic_cast<ManualClock *>(&clock);
                if (!manual)
                    throw ScriptError(1, "advance needs a router with --clock manual");
                const auto time = words.take_duration("the time");
                return [manual, time] {
                    if (!manual->advance(time))
                        throw std::runtime_error("a request was still at work after 10 s");
                };
            }};
}

// What a line from outside does to the modem is done, with all that follows, when it is answered.
// A fault may be what the router waits for, and is carried out at once.
void settle_each(Commands &commands, Clock &clock)
{
    auto *const manual = dynamic_cast<ManualClock *>(&clock);
    if (!manual)
        return;
    for (Command &command : commands)
        if (command.name != "fault")
            command.parse = [manual, parse = command.parse](Words &words) -> Action {
                return [manual, action = parse(words)] { manual->perform(action); };
            };
}

} // namespace

Simulation::Simulation(const ServerOptions &options)
    : options_(options), clock_(make_clock(options)), modem_(*clock_, options.seed),
      at_link_(
          Channel::at, *clock_, [this](long code) { event("request " + std::to_string(code)); },
          options.verbose),
      qmi_link_(
          Channel::qmi, *clock_,
          [this](long code) { event("qmi-request " + std::to_string(code)); }, options.verbose),
      commands_(scenario_commands(modem_, at_link_, qmi_link_, options)),
      timeline_(*clock_, parse_script(options.scenario, options.scenario_name, commands_),
                [&options](const Step &step, const std::string &why) {
                    std::fprintf(stderr, "cmif-sim: %s:%zu: %s\n", options.scenario_name.c_str(),
                                 step.line, why.c_str());
                })
{
    settle_each(commands_, *clock_);
    commands_.push_back(advance_command(*clock_));
}

Simulation::~Simulation()
{
    modem_.watch_events({});
    at_link_.stop();
    qmi_link_.stop();
}

bool Simulation::start_daemons()
{
    publisher_.emplace(modem_);
    at_.emplace(modem_, *publisher_, at_link_, stop_, options_.verbose);
    qmi_.emplace(modem_, *publisher_, qmi_link_, stop_, options_.verbose);
    return (!options_.at || at_->start()) && (!options_.qmi || qmi_->start());
}

bool Simulation::start()
{
    modem_.watch_events([this](std::string_view name) { event(name); });
    if (options_.store && !start_daemons())
        return false;
    if (!options_.state.empty()) {
        Words words("state " + options_.state);
        parse_command(commands_, words)();
    }
    timeline_.start();
    return true;
}

void Simulation::event(std::string_view name)
{
    timeline_.event(name);
    at_link_.event(name);
    qmi_link_.event(name);
    if (options_.happened)
        options_.happened(name);
}

BoxStatus Simulation::status() const
{
    constexpr DaemonStatus left_out{"left out"};
    SimulationStatus status{std::nullopt,
                            std::nullopt,
                            options_.at ? at_link_.status() : left_out,
                            options_.qmi ? qmi_link_.status() : left_out,
                            timeline_.pending(),
                            ports_};
    if (!options_.manual_clock)
        status.pace = options_.pace;
    else
        status.time = std::chrono::duration<double>(clock_->now().time_since_epoch()).count();
    return {since_, status};
}

void check_scenario(const ServerOptions &options)
{
    ManualClock clock;
    simulated::Modem modem(clock, options.seed);
    FaultyLink at(Channel::at, clock, {}, false), qmi(Channel::qmi, clock, {}, false);
    parse_script(options.scenario, options.scenario_name,
                 scenario_commands(modem, at, qmi, options));
}

std::vector<Words::Offer> what_may_follow(const std::string &line, const ServerOptions &options)
{
    ManualClock clock;
    simulated::Modem modem(clock, 1);
    FaultyLink at(Channel::at, clock, {}, false), qmi(Channel::qmi, clock, {}, false);
    Commands commands = scenario_commands(modem, at, qmi, options);
    commands.push_back(advance_command(clock));
    Words words(line);
    try {
        parse_command(commands, words);
    } catch (const ScriptError &) { // it is not complete
    }
    return words.offers();
}

} // namespace cmif_sim
