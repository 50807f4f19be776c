#include "generated.h"

#include "cli/completion.h"
#include "cli/manual.h"
#include "commands.h"

namespace cmifctl
{

void print_completion(Context &context)
{
    context.report.text("script",
                        cli::completion_script(tables(), context.arguments.text("shell")));
}

void print_candidates(Context &context)
{
    const auto candidates = cli::complete(tables(), context.arguments.all("words"));
    Json rows = Json::array();
    for (const cli::Candidate &candidate : candidates)
        rows.push_back({{"value", candidate.value}, {"description", candidate.description}});
    context.report.text("candidates", cli::candidates_text(candidates));
    context.report.data("candidates", std::move(rows));
}

void print_manual(Context &context)
{
    context.report.text("page", cli::manual_page(tables()));
}

} // namespace cmifctl
