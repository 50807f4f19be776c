// What the fuzz targets share: a store to fill, texts in memory of their size, and the check that
// ends a run with a finding.
#ifndef TESTS_FUZZ_FUZZ_STORE_H
#define TESTS_FUZZ_FUZZ_STORE_H

#include <map>
#include <memory>
#include <string>

// The library's store; every key that isn't here is empty.
extern std::map<std::string, std::string> stored;

// Ends the process when `holds` is false: the input is a finding.
void check(bool holds, const char *what);

// A text in memory of exactly its size, with its NUL, so that reading past it shows.
std::unique_ptr<char[]> exactly(const std::string &text);

#endif
