#include "cli/program.h"
#include "command_line.h"
#include "server.h"

int main(int count, char **words)
{
    return cli::run_program(cmifd::tables(), count, words, [](const cli::Line &line) {
        const cmifd::Options options = cmifd::options_of(line.arguments);
        return options.probe ? cmifd::probe(options) : cmifd::serve(options);
    });
}
