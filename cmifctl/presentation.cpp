#include "presentation.h"

#include "cmifctl/output/flat_text.h"
#include "cmifctl/output/json_text.h"
#include "cmifctl/output/terminal.h"
#include "cmifctl/output/terminal_text.h"
#include "cmifctl/output/text_report.h"

#include <cstdio>

namespace cmifctl
{
namespace
{

// A reading that repeats is a line each time.
Layout layout(const OutputOptions &output)
{
    return output.watch ? Layout::one_line : Layout::indented;
}

} // namespace

Json document(const std::string &command, const Json &members)
{
    Json whole{{"version", document_version},
               {"command", command.empty() ? Json() : Json(command)}};
    whole.update(members);
    return whole;
}

std::string rendered(const Context &context, const std::string &command)
{
    const OutputOptions &output = context.output;
    if (output.format == Format::human && output.fields.empty())
        return render_text(context.report, output_columns(), output_in_colour(output.colour));
    const Json whole = document(command, context.report.document());
    if (!output.fields.empty())
        return render_fields(whole, output.fields);
    if (output.format == Format::keyvalue)
        return render_keyvalue(whole);
    return render_json(whole, layout(output));
}

void print_failure(const Failure &failure, const std::string &command, const OutputOptions &output)
{
    clear_progress();
    if (!output.json()) {
        std::fprintf(stderr, "cmifctl: %s\n", escape_controls(failure.what()).c_str());
        if (!failure.hint().empty())
            std::fprintf(stderr, "  %s\n", escape_controls(failure.hint()).c_str());
        return;
    }
    Json error{{"code", static_cast<int>(failure.status())},
               {"name", name_of(failure.status())},
               {"message", failure.what()},
               {"hint", failure.hint().empty() ? Json() : Json(failure.hint())}};
    error.update(failure.details());
    print(render_json(document(command, {{"error", error}}), layout(output)));
}

} // namespace cmifctl
