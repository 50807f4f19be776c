#include "box_status.h"

#include "cmif-record/json_line.h"

#include <algorithm>
#include <cstdio>

namespace cmif_sim
{
namespace
{

constexpr int status_version = 1;

std::string row(const std::string &name, const std::string &value)
{
    constexpr std::size_t width = 9;
    return name + std::string(width - std::min(width, name.size()), ' ') + value + "\n";
}

std::string local_time(std::time_t moment)
{
    char text[32];
    std::tm parts{};
    localtime_r(&moment, &parts);
    return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &parts)};
}

std::string utc(std::time_t moment)
{
    char text[32];
    std::tm parts{};
    gmtime_r(&moment, &parts);
    return {text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts)};
}

std::string number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.10g", value);
    return text;
}

std::string daemon_text(const DaemonStatus &daemon)
{
    if (!daemon.process)
        return daemon.state;
    return std::string(daemon.state) + ", process " + std::to_string(*daemon.process) +
           " in the box";
}

std::string simulation_text(const SimulationStatus &simulation)
{
    std::string text =
        row("clock", simulation.pace ? "real, pace " + number(*simulation.pace)
                                     : "manual, at " + number(simulation.time.value_or(0)) + " s");
    for (const std::string &port : simulation.ports)
        text += row("port", port);
    if (simulation.ports.empty())
        text += row("AT", daemon_text(simulation.at)) + row("QMI", daemon_text(simulation.qmi));
    for (const std::string &fault : simulation.at.faults)
        text += row("fault", "at " + fault);
    for (const std::string &fault : simulation.qmi.faults)
        text += row("fault", "qmi " + fault);
    for (const std::string &step : simulation.steps)
        text += row("step", step);
    return text;
}

std::string replay_text(const ReplayStatus &replay)
{
    return row("replay", std::to_string(replay.taken) + " of " + std::to_string(replay.recorded) +
                             " recorded requests came, and " + std::to_string(replay.refused) +
                             " that were not recorded");
}

// --- As JSON ---

using cmif_record::JsonLine;

void add_daemon(JsonLine &line, const char *name, const DaemonStatus &daemon)
{
    std::string state = daemon.state;
    std::replace(state.begin(), state.end(), ' ', '_');
    line.open(name);
    line.add("state", state);
    if (daemon.process)
        line.add("process", *daemon.process);
    else
        line.add_null("process");
    line.add_list("faults", daemon.faults);
    line.close();
}

void add_simulation(JsonLine &line, const SimulationStatus &simulation)
{
    line.add("clock", simulation.pace ? "real" : "manual");
    if (simulation.pace)
        line.add_literal("pace", number(*simulation.pace));
    else
        line.add_null("pace");
    if (simulation.time)
        line.add_literal("time", number(*simulation.time));
    else
        line.add_null("time");
    add_daemon(line, "at", simulation.at);
    add_daemon(line, "qmi", simulation.qmi);
    line.add_list("steps", simulation.steps);
    line.add_list("ports", simulation.ports);
}

void add_replay(JsonLine &line, const ReplayStatus &replay)
{
    line.open("replay");
    line.add("recorded", static_cast<long long>(replay.recorded));
    line.add("taken", static_cast<long long>(replay.taken));
    line.add("refused", static_cast<long long>(replay.refused));
    line.close();
}

} // namespace

std::string text_of(const BoxStatus &status)
{
    return row("since", local_time(status.since)) +
           (status.simulation ? simulation_text(*status.simulation) : "") +
           (status.replay ? replay_text(*status.replay) : "");
}

std::string json_of(const BoxStatus &status, pid_t box)
{
    JsonLine line;
    line.add("version", status_version);
    line.add("box", box);
    line.add("since", utc(status.since));
    if (status.simulation)
        add_simulation(line, *status.simulation);
    if (status.replay)
        add_replay(line, *status.replay);
    return line.finish();
}

} // namespace cmif_sim
