#!/bin/sh
# Makes the manual pages from the help texts: make_pages.sh TOOL VERSION DIRECTORY. The definitions of the options are the
# only source.
set -eu
tool=$1 version=$2 directory=$3
name=$(basename "$tool")

# Arguments: the page's name, the first sentence, the command. Each example keeps its line.
make_page() {
    page=$1 sentence=$2 && shift 2
    help2man --no-info --no-discard-stderr --version-string="$version" --name="$sentence" "$*" |
        sed -e "/^\.SH NAME/,/^\.SH SYNOPSIS/s/^$name.*\\\\-/$page \\\\-/" \
            -e '/^\.SH EXAMPLES/,$s/^\.IP$/.IP\n.nf/' > "$directory/$page.1"
}

summary() {
    "$@" --help | head -n 1 | sed 's/^./\L&/; s/\.$//'
}

subcommands() {
    "$@" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z][a-z-]*\) .*/\1/p'
}

mkdir -p "$directory"
rm -f "$directory"/*.1
make_page "$name" "$(summary "$tool")" "$tool"
for command in $(subcommands "$tool"); do
    make_page "$name-$command" "$(summary "$tool" "$command")" "$tool $command"
    for step in $(subcommands "$tool" "$command"); do
        make_page "$name-$command-$step" "$(summary "$tool" "$command" "$step")" "$tool $command $step"
    done
done
