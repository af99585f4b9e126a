# shellcheck shell=bash
# The tests of what changed, for scripts/test.sh quick: no set-up, whole programs, no other build.

# Prints the files that differ from the last commit or, when none does, those of the last commit.
changed_files() {
    local changed
    changed=$(git diff --name-only HEAD && git ls-files --others --exclude-standard)
    if [[ -n $changed ]]; then echo "$changed"; else git diff --name-only HEAD~ HEAD; fi
}

# tests_of FILE: prints which of the lines "folder program" name its tests, as a regular expression.
tests_of() {
    case $1 in
        include/* | src/* | support/*)
            echo '^(contract|device|directlink|integration|unit) (KvSync|[^KSV]|S[^c])' ;;
        plugins/*) echo ' (Scanner|Virtual)' ;;
        simulator/*) echo '^simulator' ;;
        tools/*) echo '^cli' ;;
        tests/*/*) echo "^$(cut -d / -f 2 <<<"$1") " ;;
    esac
}

# Shows what a program printed only when it failed: the core's log lines would bury the result.
run_program() {
    local log=build/dev/tests/$1.log
    "build/dev/tests/$1/$1" --gtest_brief=1 >"$log" 2>&1 || {
        cat "$log"
        return 1
    }
    echo "   $1: $(grep -oE '[0-9]+ tests?\.$' "$log")"
}

quick() {
    [[ -f build/dev/tests/programs.txt ]] || configure dev
    local programs
    mapfile -t programs < <(changed_files | while read -r file; do tests_of "$file"; done |
        sort -u | grep -hEf - build/dev/tests/programs.txt | cut -d ' ' -f 2)
    ((${#programs[@]})) || die "no test program belongs to what changed; try scripts/test.sh"

    stage "dev: build ${programs[*]}" cmake --build build/dev -j "$(nproc)" --target "${programs[@]}"
    export -f run_program
    stage "dev: tests" xargs -P "$(nproc)" -I{} bash -c 'run_program {}' \
        <<<"$(printf '%s\n' "${programs[@]}")"
}
