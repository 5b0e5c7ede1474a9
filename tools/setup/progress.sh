# shellcheck shell=bash
# Progress of long steps. Sourced.

# show_progress WHAT: reads lines "DONE TOTAL" and shows the share done and the time left: in one line that overwrites
# itself on a terminal, else in a line for every tenth.
show_progress() {
    local what=$1 start=$SECONDS first='' tenth=0 done total left
    while read -r done total; do
        [ -n "$first" ] || first=$done
        [ "$done" -gt "$first" ] && [ "$total" -ge "$done" ] || continue
        left=$(((SECONDS - start) * (total - done) / (done - first)))
        left=$(printf '%d:%02d' $((left / 60)) $((left % 60)))
        if [ -t 1 ]; then
            printf '\r-- %s: %d %%, %s left ' "$what" $((done * 100 / total)) "$left"
        elif [ $((done * 10 / total)) -gt "$tenth" ]; then
            tenth=$((done * 10 / total))
            printf -- '-- %s: %d %%, %s left\n' "$what" $((tenth * 10)) "$left"
        fi
    done
    [ ! -t 1 ] || [ -z "$first" ] || printf '\r\033[K'
}

# run_ninja WHAT LOG ARGUMENTS...: cmake --build with progress; its output goes to the log.
run_ninja() {
    local what=$1 log=$2
    shift 2
    NINJA_STATUS='@%f %t@ ' cmake --build "$@" 2>&1 | tee "$log" |
        sed -un 's/^@\([0-9]*\) \([0-9]*\)@ .*/\1 \2/p' | show_progress "$what"
}
