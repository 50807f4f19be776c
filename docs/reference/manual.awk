# With header.awk: the manual pages of cmif.h, in the folder `out`: libcmif(3), and one for each group.
# `version` is the library's, `date` the pages' date as mdoc has it.

# Text for mdoc: a sentence begins a line, a line has at most 80 bytes, and none begins like a macro.
function escaped(from,    words, n, i, word, line, lines) {
    gsub(/\\/, "\\e", from)
    while (match(from, /`[^`]*`/))
        from = substr(from, 1, RSTART - 1) "\\fI" substr(from, RSTART + 1, RLENGTH - 2) "\\fR" \
            substr(from, RSTART + RLENGTH)
    n = split(from, words, /[ \n]+/)
    for (i = 1; i <= n; ++i) {
        word = words[i]
        if (line == "" && word ~ /^[.']/) word = "\\&" word
        line = line (line == "" ? "" : " ") word
        if (i == n || word ~ /[.:]$/ || length(line " " words[i + 1]) > 78) {
            lines = lines (lines == "" ? "" : "\n") line
            line = ""
        }
    }
    return lines
}

function begin(page) {
    file = out "/" page ".3"
    printf "" > file
    put(".Dd " date "\n.Dt " toupper(page) " 3\n.Os CMIF " version "\n.Sh NAME")
}

function put(line) { print line >> file }

function end_page() {
    if (file != "") close(file)
}

function begin_list(heading) {
    if (heading != "") put(".Ss " heading)
    put(".Bl -tag -width Ds")
}

# A page says once where the trace is explained.
function traced(    i, all) {
    for (i = 1; i <= functions; ++i) all = all descriptions[i]
    for (i = 1; i <= labels; ++i) all = all group_texts[i]
    return all ~ /traced/
}

# A group's page is written when all of it is known.
function end_group(    i) {
    if (current == "") return
    begin(current)
    for (i = 1; i <= functions; ++i) put(".Nm " names[i] (i < functions ? " ," : ""))
    if (!functions) put(".Nm " current)
    put(".Nd " titles[current])
    put(".Sh SYNOPSIS\n.In cmif.h")
    for (i = 1; i <= functions; ++i) put(synopses[i])
    put(".Sh DESCRIPTION")
    if (abouts != "") put(escaped(abouts))
    if (records != "") put(".Bd -literal\n" substr(records, records ~ /^\n/ ? 2 : 1) ".Ed")
    for (i = 1; i <= functions; ++i) {
        if (i == 1 || headings[i] != headings[i - 1]) begin_list(headings[i])
        put(".It Fn " names[i] "\n" descriptions[i])
        if (i == functions || headings[i] != headings[i + 1]) put(".El")
    }
    for (i = 1; i <= labels; ++i)
        if (group_texts[i] != "") put(".Sh " sections[label[i]] "\n" escaped(capital(group_texts[i])))
    if (traced()) put(".Sh TRACE\nA line that is traced is printed when its switch is on:\n.Xr libcmif 3 .")
    put(".Sh SEE ALSO\n.Xr libcmif 3")
    end_page()
}

BEGIN {
    sections["Result"] = "RETURN VALUES"
    sections["Blocks"] = "BLOCKING"
    sections["Threads"] = "THREADS"
    sections["Prints"] = "OUTPUT"
}

function overview(from) { overview_text = from }

function group(page, title,    i) {
    end_group()
    current = pages[++count] = page
    titles[page] = title
    abouts = group_text["about"]
    records = ""
    functions = 0
    for (i = 1; i <= labels; ++i) group_texts[i] = group_text[label[i]]
}

function synopsis(declaration,    type, list, n, i, arguments) {
    type = declaration
    sub(/ *[a-zA-Z_0-9]*\(.*/, "", type)
    list = declaration
    sub(/^[^(]*\(/, "", list)
    sub(/\)[^)]*$/, "", list)
    n = split(list, parts, /, */)
    for (i = 1; i <= n; ++i) arguments = arguments " \"" parts[i] "\""
    return ".Ft \"" type "\"\n.Fn " name_of(declaration) arguments
}

function name_of(declaration) {
    sub(/\(.*/, "", declaration)
    sub(/.*[ *]/, "", declaration)
    return declaration
}

function function_(name, declaration,    i) {
    names[++functions] = name
    synopses[functions] = synopsis(declaration)
    headings[functions] = row_heading
    descriptions[functions] = escaped(capital(text["about"]))
    for (i = 1; i <= labels; ++i)
        if (own[label[i]] != "")
            descriptions[functions] = descriptions[functions] "\n.Pp\n" label[i] ":\n" escaped(text[label[i]])
}

function other(declaration, comment) {
    gsub(/\\/, "\\e", declaration)
    if (current == "" && declaration ~ /^enum/) results = declaration
    if (current != "") records = records (comment == "" ? "" : "\n/* " comment " */\n") declaration
}

function finish(    i, n, paragraph) {
    end_group()
    begin("libcmif")
    put(".Nm libcmif\n.Nd connection-manager interface of an LTE router")
    put(".Sh LIBRARY\nlibcmif, \\-lcmif\n.Sh SYNOPSIS\n.In cmif.h\n.Sh DESCRIPTION")
    n = split(overview_text, paragraph, "\n\n")
    for (i = 2; i < n; ++i) put((i > 2 ? ".Pp\n" : "") escaped(paragraph[i]))
    put(".Bl -enum")
    gsub(/\n +/, " ", paragraph[n])
    sub(/^ +[0-9]+\. /, "", paragraph[n])
    items = split(paragraph[n], item, / [0-9]+\. /)
    for (i = 1; i <= items; ++i) put(".It\n" escaped(item[i]))
    put(".El\n.Pp\nThe groups:\n.Bl -tag -width Ds")
    for (i = 1; i <= count; ++i) put(".It Xr " pages[i] " 3\n" titles[pages[i]])
    put(".El\n.Sh RETURN VALUES\n.Bd -literal -compact\n" results ".Ed")
    end_page()
}
