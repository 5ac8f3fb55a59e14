#!/usr/bin/env bash
# check_manual.sh TOOL COMPLETION PAGES: every option of every command is completed, described in the help text and in the
# manual; every value that the completion offers is one that the tool takes. PAGES may be empty: no manual was built.
set -eu
tool=$1 completion=$2 pages=$3
set +u
source /usr/share/bash-completion/bash_completion
source "$completion"

failures=0
fail() {
    echo "$*"
    failures=$((failures + 1))
}

# The completions for these words; the last word is the one to complete.
offers() {
    COMP_WORDS=("$tool" "$@") COMP_CWORD=$# COMP_LINE="$tool $*" COMP_POINT=${#COMP_LINE} COMPREPLY=()
    _kvx_demosaic "$tool" "${!#}" "${COMP_WORDS[COMP_CWORD - 1]}" || true
    printf '%s\n' "${COMPREPLY[@]}" | sort -u
}

commands=$("$tool" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z-]*\) .*/\1/p')
[ "$(offers "")" = "$(sort <<< "$commands")" ] || fail "commands completed: $(offers "")"
steps=$("$tool" calibrate --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z-]*\) .*/\1/p')
[ "$(offers calibrate "")" = "$(sort <<< "$steps")" ] || fail "steps completed: $(offers calibrate "")"
# shellcheck disable=SC2086  # a step is a second word
for command in $commands $(sed 's/^/calibrate=/' <<< "$steps"); do
    page=kvx-demosaic-${command/=/-}.1
    command=${command/=/ }
    help=$("$tool" $command --help)
    # The line of an option: names, possibly the name of a value, and after two blanks its description.
    options=$(sed -n '/^Options:/,/^$/s/^  \(-[a-z],\)\?\(--[a-z-]*\).*  \+[A-Z0-9a-z].*/\2/p' <<< "$help")
    [ "$(grep -c '^  -' <<< "$(sed -n '/^Options:/,/^$/p' <<< "$help")")" = "$(wc -l <<< "$options")" ] ||
        fail "$command: an option has no description"
    for option in $options; do
        grep -qx -e "$option" <<< "$(offers $command "--")" || fail "$command $option: not completed"
        [ -z "$pages" ] || grep -q -e "${option//-/\\\\-}" "$pages/$page" ||
            fail "$command $option: not in the manual"
    done
done

frame=$(mktemp)
trap 'rm -f "$frame"' EXIT
head -c 32 /dev/zero > "$frame"
for option in --to --algorithm --look --exposure --white-balance --defects --tone --flip --layout; do
    values=$(offers convert "$option" "")
    [ -n "$values" ] || fail "$option: no values completed"
    for value in $values; do
        command=convert format=BayerRG8
        case $option,$value in
            --to,RGB[0-9]* | --to,BGR[0-9]*) ;;
            --to,* | --white-balance,sidecar) continue ;;
            --algorithm,fast | --algorithm,simple | --algorithm,bayer-like | --algorithm,kodak*) format=TrueSense_RGGB_WRRW_0_8 ;;
            --layout,*) command=pack format=BayerRG10 ;;
        esac
        [ $format = BayerRG10 ] && height=2 || height=4
        "$tool" $command "$frame" - --format $format --width 8 --height $height "$option" "$value" > /dev/null ||
            fail "$option $value: refused"
    done
done
exit $((failures > 0))
