// A program with one of everything that a table can hold.
#ifndef TESTS_CLI_SAMPLE_TABLE_H
#define TESTS_CLI_SAMPLE_TABLE_H

#include "cli/table.h"

extern const cli::Program sample;

#endif
