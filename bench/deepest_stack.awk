# Prints the deepest chain of the library's own frames in bytes, and the exported function that
# starts it, from the call graphs of g++ -fcallgraph-info=su -fno-ipa-icf. It is an upper bound over
# all paths. A call through a FunctionRef counts as the deepest of all its targets ("_FUN"). What
# can't be added up (recursion, a frame without a bound, a function without a frame) ends with
# status 1.

function fail(what) {
    print what > "/dev/stderr"
    failed = 1
    exit 1
}

function quoted_after(word,    text) {
    text = substr($0, index($0, word ": \"") + length(word) + 3)
    return substr(text, 1, index(text, "\"") - 1)
}

# A call of a complete-object constructor or destructor (C1, D1) runs the base-object one, which has
# the code.
function code_of(name,    other) {
    other = name
    if (!(name in frame) && (sub(/C1E/, "C2E", other) || sub(/D1E/, "D2E", other)) && other in frame)
        return other
    return name
}

function depth(name,    parts, count, i, below, deepest) {
    name = code_of(name)
    if (name in depths)
        return depths[name]
    if (name in active)
        fail("recursion: " name)
    if (name != "__indirect_call" && !(name in frame)) {
        if (name ~ /_ZN4cmif|^shared_/)
            fail("no frame of " name)
        return 0 # of the C library or the store
    }
    active[name] = 1
    count = split(calls[name], parts, "\n")
    for (i = 1; i <= count; ++i) {
        below = parts[i] == "" ? 0 : depth(parts[i])
        if (below > deepest)
            deepest = below
    }
    delete active[name]
    depths[name] = frame[name] + deepest
    return depths[name]
}

/^node:/ && / bytes \(/ {
    if (!match($0, /[0-9]+ bytes \((static|dynamic,bounded)\)/))
        fail("not a bounded frame: " $0)
    name = quoted_after("title")
    frame[name] = substr($0, RSTART) + 0
    if (name ~ /_FUN/)
        calls["__indirect_call"] = calls["__indirect_call"] name "\n"
}

/^edge:/ {
    name = quoted_after("sourcename")
    calls[name] = calls[name] quoted_after("targetname") "\n"
}

END {
    if (failed)
        exit 1
    for (name in frame)
        if (name !~ /:|^_Z/ && depth(name) > most) {
            most = depth(name)
            entry = name
        }
    if (!most)
        fail("no call graph")
    print most, entry
}
