# A JSON document, laid out as cmifctl prints it, one item a line: writes each value as "path=value",
# and fails when it is not exactly one well-formed document.

BEGIN {
    escape = "\\\\([\"\\\\/bfnrt]|u[0-9a-f][0-9a-f][0-9a-f][0-9a-f])"
    string = "\"([^\"\\\\]|" escape ")*\""
    scalar = "^(" string "|-?[0-9]+(\\.[0-9]+)?(e[-+][0-9]+)?|true|false|null|\\{\\}|\\[\\])$"
    expected = "item"
}

function fail(why) {
    print "line " NR ": " why ": " $0 > "/dev/stderr"
    failed = 1
    exit 1
}

{
    text = $0
    sub(/^ +/, "", text)
    comma = sub(/,$/, "", text)
}

text == "}" || text == "]" {
    if (depth == 0 || closing[depth] != text || expected == "item")
        fail("misplaced end")
    --depth
    expected = comma ? "item" : "end"
    next
}

{
    if (expected == "end" || (depth == 0 && NR > 1))
        fail("misplaced item")
    name = ""
    if (depth > 0 && closing[depth] == "]") {
        name = count[depth]++
    } else if (depth > 0) {
        if (!match(text, "^" string ": "))
            fail("no key")
        name = substr(text, 2, RLENGTH - 4)
        text = substr(text, RLENGTH + 1)
    }
    path[depth + 1] = depth > 1 ? path[depth] "." name : name
}

text == "{" || text == "[" {
    if (comma)
        fail("comma at the start")
    closing[++depth] = text == "{" ? "}" : "]"
    count[depth] = 0
    expected = "any"
    next
}

text !~ scalar { fail("no value") }

{
    print path[depth + 1] "=" text
    expected = comma ? "item" : "end"
}

END {
    if (!failed && (NR == 0 || depth > 0 || expected != "end")) {
        print "the document is not complete" > "/dev/stderr"
        failed = 1
    }
    exit failed
}
