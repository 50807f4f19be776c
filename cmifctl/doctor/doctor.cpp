#include "checks.h"
#include "client/process.h"
#include "cmifctl/verbs/verbs.h"

#include <algorithm>
#include <string_view>

namespace cmifctl
{
namespace
{

struct Finding {
    const Check *check;
    std::string text;
    bool fixed = false;

    bool operator==(const Finding &other) const
    {
        return check == other.check && text == other.text;
    }
    bool is_trouble() const { return !fixed && std::string_view(check->severity) != "note"; }
};

std::vector<Finding> examine(const Look &look)
{
    std::vector<Finding> findings;
    for (const Check &check : all_checks())
        for (const std::string &text : check.find(look))
            findings.push_back({&check, text});
    return findings;
}

bool has(const std::vector<Finding> &findings, const Finding &finding)
{
    return std::find(findings.begin(), findings.end(), finding) != findings.end();
}

void run_fixes(const std::vector<Finding> &found, const Look &look)
{
    const Check *last = nullptr;
    for (const Finding &finding : found) {
        if (finding.check != last && finding.check->fix != nullptr)
            finding.check->fix(look);
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
            {"cure", finding.check->cure},
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
            report.line(std::string(severity.size() + 2, ' ') + finding.check->cure);
    }
    report.data("findings", std::move(rows));
}

std::string state_line(const ChannelLook &channel)
{
    constexpr const char *names[]{"answers", "not running", "not ready", "stopped",
                                  "ended",   "silent",      "unknown"};
    const std::string state = names[static_cast<int>(channel.state)];
    return channel.process > 0 ? state + " (" + client::process_name(channel.process) + ")" : state;
}

void report_state(Report &report, const Look &look)
{
    const auto add = [&report](const char *key, const std::string &text, const char *label = "") {
        report.field("router",
                     {.key = key, .value = text.empty() ? Json() : Json(text), .label = label});
    };
    add("at_daemon", state_line(look.at()), "AT daemon");
    add("qmi_daemon", state_line(look.qmi()), "QMI daemon");
    add("store", look.store.path);
    add("sim", sim_line(look), "SIM");
    add("registration", registration_line(look));
}

} // namespace

void doctor(Context &context)
{
    Look look = take_look(context);
    std::vector<Finding> findings = examine(look);
    if (context.arguments.has("fix")) {
        run_fixes(findings, look);
        look = take_look(context);
        findings = compare(std::move(findings), examine(look));
    }
    report_state(context.report, look);
    report_findings(context.report, findings);
    const bool healthy = std::none_of(findings.begin(), findings.end(),
                                      [](const Finding &finding) { return finding.is_trouble(); });
    if (healthy)
        context.report.line("nothing wrong");
    context.status = healthy ? Exit::done : Exit::other;
}

} // namespace cmifctl
