# With header.awk: cmif.h with Doxygen's commands, for Doxygen to read in its place.

# Text for Doxygen, whose special characters are escaped.
function escaped(from) {
    gsub(/[<>%#@]/, "\\\\&", from)
    return from
}

function end_group() { if (in_group) print "/** @} */" }

function overview(from) {
    from = escaped(from)
    sub(/^[^\n]*\n\n/, "", from)
    print "/** @file cmif.h\n * @mainpage CMIF\n *\n" from "\n */"
}

function group(page, title,    i) {
    end_group()
    in_group = 1
    print "/** @defgroup " page " " title "\n@{\n" escaped(group_text["about"])
    for (i = 1; i <= labels; ++i)
        if (group_text[label[i]] != "") print "\n@par " label[i] "\n" escaped(capital(group_text[label[i]]))
    print "*/"
}

function function_(name, declaration,    i) {
    print "/** " (row_heading == "" ? "" : row_heading ": ") escaped(text["about"])
    for (i = 1; i <= parameters; ++i) print "@param " parameter[i] " " escaped(about[i])
    print "@return " escaped(text["Result"])
    print "@sa @ref " page " for the group, @ref index for the conventions"
    for (i = 2; i <= labels; ++i) print "@par " label[i] "\n" escaped(capital(text[label[i]]))
    print "*/"
    sub(/ CMIF_PRINTF_LIKE/, "", declaration)
    print declaration
}

function other(declaration, comment,    lines, n, i, at) {
    if (comment != "") print "/** " escaped(comment) " */"
    n = split(declaration, lines, "\n")
    for (i = 1; i < n; ++i) {
        at = index(lines[i], "/*")
        print at ? substr(lines[i], 1, at - 1) "/**<" escaped(substr(lines[i], at + 2)) : lines[i]
    }
}

function finish() { end_group() }
