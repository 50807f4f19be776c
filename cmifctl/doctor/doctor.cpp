#include "checks.h"
#include "cmifctl/calls.h"
#include "cmifctl/verbs/store.h"
#include "cmifctl/verbs/verbs.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace cmifctl
{
namespace
{

struct Finding {
    const Check *check;
    std::string text;
    std::string hint;
    bool fixed = false;

    bool operator==(const Finding &other) const
    {
        return check == other.check && text == other.text;
    }
    bool is_problem() const { return !fixed && std::string_view(check->severity) != "note"; }
};

std::vector<Finding> examine(const Snapshot &snapshot)
{
    std::vector<Finding> findings;
    for (const Check &check : all_checks())
        for (const Problem &problem : check.find(snapshot))
            findings.push_back({&check, problem.text, hint_of(check, problem)});
    return findings;
}

bool has(const std::vector<Finding> &findings, const Finding &finding)
{
    return std::find(findings.begin(), findings.end(), finding) != findings.end();
}

void run_fixes(const std::vector<Finding> &found, const Snapshot &snapshot)
{
    const Check *last = nullptr;
    for (const Finding &finding : found) {
        if (finding.check != last && finding.check->fix != nullptr)
            finding.check->fix(snapshot);
        last = finding.check;
    }
}

// What was found and is no longer there, then what is there now.
std::vector<Finding> compare(std::vector<Finding> before, const std::vector<Finding> &after)
{
    std::erase_if(before, [&after](const Finding &finding) { return has(after, finding); });
    for (Finding &finding : before)
        finding.fixed = true;
    before.insert(before.end(), after.begin(), after.end());
    return before;
}

Json json_of(const Finding &finding)
{
    return {{"name", finding.check->name},
            {"severity", finding.check->severity},
            {"text", finding.text},
            {"hint", finding.hint},
            {"fixed", finding.fixed}};
}

void report_findings(Report &report, const std::vector<Finding> &findings)
{
    Json rows = Json::array();
    for (const Finding &finding : findings) {
        rows.push_back(json_of(finding));
        const std::string severity = finding.fixed ? "fixed" : finding.check->severity;
        report.line(severity + ": " + finding.text);
        if (!finding.fixed)
            report.line(std::string(severity.size() + 2, ' ') + finding.hint);
    }
    report.data("findings", std::move(rows));
}

void report_state(Report &report, const Snapshot &snapshot)
{
    const Json sim = text_or_null(snapshot.store.value("lte_sim_status"));
    const Json registration = text_or_null(snapshot.store.value("lte_network_reg_status_state"));
    report.field("sim", coded("state", enums::sim_state, sim));
    report.field("network", coded("registration", enums::registration, registration));
    for (const ChannelSnapshot &channel : snapshot.channels)
        report_daemon(report, channel.channel, channel.daemon);
    report_store(report, !sim.is_null());
}

} // namespace

void doctor(Context &context)
{
    Snapshot snapshot = take_snapshot(context);
    std::vector<Finding> findings = examine(snapshot);
    if (context.arguments.has("fix")) {
        run_fixes(findings, snapshot);
        snapshot = take_snapshot(context);
        findings = compare(std::move(findings), examine(snapshot));
    }
    report_state(context.report, snapshot);
    report_findings(context.report, findings);
    const bool healthy = std::none_of(findings.begin(), findings.end(),
                                      [](const Finding &finding) { return finding.is_problem(); });
    if (healthy)
        context.report.line("nothing wrong");
    context.status = healthy ? Exit::done : Exit::other;
}

} // namespace cmifctl
