# Reads cmif.h as its comments are written, and calls the functions of the program that is loaded
# with it:
#
#     overview(text)                    the first comment
#     group(page, title)                the head of a group; its texts are in group_text[WHAT]
#     function_(name, declaration)      a function; its texts are in text[WHAT]; parameter[1..parameters];
#                                       `row_heading` if it is one of the rows under a heading, else ""
#     other(declaration, comment)       a record, an enum or a macro, as it stands in the header
#     finish()
#
# WHAT is "about", "Result", "Blocks", "Threads" or "Prints". A function has the texts of its group
# where its own comment has none, and in place of "as above"; own[WHAT] is its comment's text. One
# that lacks a text, or has a parameter that no text names, is an error, and so is a member, a code or
# a macro without a comment.

BEGIN { labels = split("Result Blocks Threads Prints", label, " ") }

function fail(message) { print FILENAME ": " message > "/dev/stderr"; failed = 1 }

# A comment without its marks; lines keep their indentation.
function bare(comment) {
    sub(/^ *\/\*[ -]*/, "", comment)
    sub(/[ -]*\*\/ *$/, "", comment)
    gsub(/\n \*( -+$)?/, "\n", comment)
    gsub(/\n /, "\n", comment)
    gsub(/^\n+|[\n -]+$/, "", comment)
    return comment
}

# Divides a bare comment into to["about"] and the labelled texts, each on one line.
function divide(comment, to,    lines, line, n, i, what) {
    split("", to)
    what = "about"
    n = split(comment, lines, "\n")
    for (i = 1; i <= n; ++i) {
        line = lines[i]
        if (match(line, /^(Result|Blocks|Threads|Prints): /)) {
            what = substr(line, 1, index(line, ":") - 1)
            line = substr(line, RLENGTH + 1)
        }
        sub(/^ +/, "", line)
        if (line != "") to[what] = to[what] (to[what] == "" ? "" : " ") line
    }
}

function capital(from) { return toupper(substr(from, 1, 1)) substr(from, 2) }

# The sentences of a text that name a parameter in back quotes.
function sentences_on(name, from,    parts, n, i, found) {
    n = split(from, parts, /\. /)
    for (i = 1; i <= n; ++i)
        if (index(parts[i], "`" name "`"))
            found = found (found == "" ? "" : " ") parts[i] (parts[i] ~ /\.$/ ? "" : ".")
    return found
}

function take_parameters(declaration,    list, names, n, i, name) {
    list = declaration
    sub(/^[^(]*\(/, "", list)
    sub(/\)[^)]*$/, "", list)
    parameters = 0
    n = split(list, names, /, */)
    for (i = 1; i <= n; ++i) {
        name = names[i]
        sub(/\[[0-9]*\]$/, "", name)
        sub(/.*[ *]/, "", name)
        if (name != "void" && name != "...") parameter[++parameters] = name
    }
}

# A label's text of a function, with its group's.
function with_group(text, from_group,    at) {
    if (text == "") return from_group
    at = index(text, "as above")
    if (!at) return text
    sub(/\.$/, "", from_group)
    return substr(text, 1, at - 1) from_group substr(text, at + length("as above"))
}

function take_function(declaration, trailing,    name, i) {
    name = declaration
    sub(/\(.*/, "", name)
    sub(/.*[ *]/, "", name)
    row_heading = trailing == "" ? "" : heading
    divide(trailing == "" ? comment : trailing ".", text)
    take_parameters(declaration)
    for (i = 1; i <= parameters; ++i) {
        about[i] = sentences_on(parameter[i], text["about"])
        if (about[i] == "") about[i] = sentences_on(parameter[i], group_text["about"])
        if (about[i] == "") fail(name ": its comment does not name `" parameter[i] "`")
    }
    for (i = 1; i <= labels; ++i) {
        own[label[i]] = text[label[i]]
        text[label[i]] = with_group(text[label[i]], group_text[label[i]])
        if (text[label[i]] == "") fail(name ": no '" label[i] ":' here or at the head of its group")
    }
    if (text["about"] == "") fail(name ": no description")
    function_(name, declaration)
}

function take_comment() {
    comment = bare(comment)
    if (!overview_done++) overview(comment)
    else if (match(comment, /^cmif_[a-z]+\(3\): /)) {
        page = substr(comment, 1, index(comment, "(") - 1)
        title = substr(comment, RLENGTH + 1)
        sub(/\n.*/, "", title)
        sub(/^[^\n]*\n?/, "", comment)
        divide(comment, group_text)
        group(page, title)
        comment = ""
    } else heading = comment
}

/^\/\* clang-format (off|on) \*\/$/ { next }
/^#if|^#endif|^#else|^#pragma|^#ifndef|^#define CMIF_(H|PRINTF_LIKE)|^extern "C"|^}$/ { next }
/^$/ && depth == 0 { comment = ""; next }

# A comment on lines of its own.
open_comment || (depth == 0 && /^\/\*/) {
    comment = open_comment ? comment "\n" $0 : $0
    open_comment = !/\*\/ *$/
    if (!open_comment) take_comment()
    next
}

# A record or an enum, whole; a macro.
depth || /\{$/ || /^#define/ {
    if (!/\/\*/ && (depth ? !/^}/ : comment == "")) fail("no comment: " $0)
    declaration = declaration $0 "\n"
    depth = !(/^}/ || /^#define/)
    if (!depth) {
        other(declaration, comment)
        declaration = ""
    }
    next
}

# A function, on one line or several.
{
    line = $0
    trailing = ""
    if (match(line, / *\/\*.*\*\/$/)) {
        trailing = bare(substr(line, RSTART))
        line = substr(line, 1, RSTART - 1)
    }
    sub(/^ +/, "", line)
    declaration = declaration (declaration == "" ? "" : " ") line
    if (line ~ /;$/) {
        take_function(declaration, trailing)
        declaration = ""
        if (trailing == "") comment = ""
    }
}

END {
    finish()
    exit failed
}
