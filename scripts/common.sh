# shellcheck shell=bash
# Shared by the commands of this repository. Sourced, never run: sets `top`, and prints its messages to standard error,
# which leaves standard output to the program.

# macOS ships bash 3; there these scripts run in Homebrew's bash.
if [ "${BASH_VERSINFO[0]}" -lt 4 ]; then
    newer="$(brew --prefix 2>/dev/null)/bin/bash"
    [ -x "$newer" ] || { echo "These scripts need bash 4 or later; on a Mac: brew install bash" >&2; exit 1; }
    exec "$newer" "$0" "$@"
fi

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { printf '%s\n' "$@" >&2; }
fail() { say "$@"; exit 1; }

# Bare containers have neither a UTF-8 locale nor a writable home, which the tools we call need.
case "$(locale charmap 2>/dev/null)" in
    UTF-8) ;;
    *) export LC_ALL=C.UTF-8 ;;
esac
if [ -z "${CCACHE_DIR:-}" ] && [ ! -w "${HOME:-/nonexistent}" ]; then export CCACHE_DISABLE=1; fi

cores() { nproc 2>/dev/null || sysctl -n hw.logicalcpu 2>/dev/null || echo 2; }

onMac() { [ "$(uname)" = Darwin ]; }
# programOf PRESET: the path of the built program.
programOf() { if onMac; then echo "$top/build/$1/desktop/Tolvane.app/Contents/MacOS/Tolvane"; else echo "$top/build/$1/desktop/tolvane"; fi; }

# CMake options for macOS on top of the presets: Homebrew's compiler and libraries, and the system's linker.
macOptions() {
    echo "-DCMAKE_CXX_COMPILER=$(brew --prefix llvm@19)/bin/clang++"
    echo "-DCMAKE_EXE_LINKER_FLAGS="
    echo "-DCMAKE_OSX_DEPLOYMENT_TARGET=15.0"
    echo "-DCMAKE_PREFIX_PATH=$(brew --prefix);$(brew --prefix icu4c)"
    echo "-DTOLVANE_BENCH=OFF"
}

# progress DONE TOTAL SINCE TEXT: one updated line on a terminal, otherwise a line every 10 %. SINCE is the value of
# SECONDS at the start. Estimates the remaining time once there is enough progress for that.
shownTenth=-1
progress() {
    local done=$1 total=$2 passed=$((SECONDS - $3)) text=$4 percent left=
    percent=$((done * 100 / total))
    if ((passed >= 10 && percent >= 3 && done < total)); then
        left=$((passed * (total - done) / done))
        if ((left >= 90)); then left=", about $(((left + 30) / 60)) min left"; else left=", about $left s left"; fi
    fi
    if [ -t 2 ]; then
        text="$percent%$left  $text"
        printf '\r\033[K  %s' "${text:0:$((${COLUMNS:-80} - 4))}" >&2
    elif ((percent / 10 != shownTenth)); then
        shownTenth=$((percent / 10))
        say "  $percent%$left"
    fi
}
clearProgress() { [ ! -t 2 ] || printf '\r\033[K' >&2; }

# Reduces Ninja's output to progress; errors pass through. Silent if there is nothing to build.
showProgress() {
    local line started='' since=$SECONDS
    shownTenth=-1
    while IFS= read -r line; do
        if [[ $line == *"Re-checking globbed"* || $line == *"Re-running CMake"* || $line == "-- "* ||
            $line == "ninja: no work to do."* || $line == "ninja: Entering directory"* ]]; then
            continue
        elif [[ $line =~ ^\[([0-9]+)/([0-9]+)\]\ (.*) ]]; then
            [ -n "$started" ] || say "Building ($1): ${BASH_REMATCH[2]} steps on $(cores) cores..."
            started=yes
            progress "$((10#${BASH_REMATCH[1]}))" "$((10#${BASH_REMATCH[2]}))" "$since" "${BASH_REMATCH[3]}"
        else
            [ -z "$started" ] || clearProgress
            say "$line"
        fi
    done
    if [ -n "$started" ]; then
        clearProgress
        ((SECONDS - since < 10)) || say "Built in $(spent $((SECONDS - since)))."
    fi
}
spent() { if (($1 < 90)); then echo "$1 s"; else echo "$(($1 / 60)) min $(($1 % 60)) s"; fi; }

# needRoom FOLDER MEGABYTES WHAT: fails early with a message if the disk is too full.
needRoom() {
    local free
    free=$(df -Pm "$1" 2>/dev/null | awk 'NR == 2 {print $4}')
    [[ ! $free =~ ^[0-9]+$ ]] || ((free >= $2)) ||
        fail "$3 takes about $2 MB, and the disk of $1 has only $free MB left. Make room, then start again."
}

# configure PRESET: does nothing unless it is the first time, the presets changed, or the clone has moved.
configure() {
    local build="$top/build/$1" home log options=()
    home=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$build/CMakeCache.txt" 2>/dev/null || true)
    if [ "$home" = "$top" ] && [ -f "$build/build.ninja" ] && [ ! "$top/CMakePresets.json" -nt "$build/build.ninja" ]; then
        return
    fi
    say "Configuring ($1)..."
    [ -z "$home" ] || [ "$home" = "$top" ] || rm -rf "$build"
    mkdir -p "$build" 2>/dev/null || fail "$build cannot be written. Clone to a folder of your own, or mend its owner: chown."
    case "$1" in release) needRoom "$build" 400 "Building the program" ;; *) needRoom "$build" 2000 "Building everything" ;; esac
    log="$build/configure.log"
    ! onMac || mapfile -t options < <(macOptions)
    if ! (cd "$top" && cmake --preset "$1" "${options[@]}") >"$log" 2>&1 </dev/null; then
        cat "$log" >&2
        fail "Configuring failed; see the lines above."
    fi
}

# build PRESET [TARGET...]
build() {
    local preset=$1
    shift
    configure "$preset"
    NINJA_STATUS='[%f/%t] ' ninja -C "$top/build/$preset" "$@" 2>&1 </dev/null | showProgress "$preset" ||
        fail "Building failed; see the lines above."
}

# runTests PRESET ARGUMENTS...: runs ctest on what is built, then prints how many tests ran in the suites and which were
# skipped, since ctest itself only counts suites. Runs one more job than there are cores, since some tests mostly wait.
runTests() {
    local build="$top/build/$1" log result=0 ran skipped
    shift
    log="$build/Testing/Temporary/LastTest.log"
    rm -f "$log"
    ctest --test-dir "$build" --no-tests=error --no-label-summary --output-on-failure \
        --parallel "$(($(cores) + 1))" "$@" </dev/null || result=$?
    if [ -f "$log" ]; then
        ran=$(grep -cE '\[ +(OK|FAILED) +\] .* \([0-9]+ ms\)$' "$log" || true)
        skipped=$(sed -nE 's/^.*\[  SKIPPED \] (.*) \([0-9]+ ms\)$/  \1/p' "$log" | LC_ALL=C sort)
        echo "Tests in suites: $ran ran, $(grep -c . <<<"$skipped" || true) skipped${skipped:+:}"
        [ -z "$skipped" ] || echo "$skipped"
    fi
    return "$result"
}

# Sets a private XDG_RUNTIME_DIR, removed at the end, to keep what runs here out of the user's session.
privateRuntimeFolder() {
    XDG_RUNTIME_DIR=$(mktemp -d)
    chmod 700 "$XDG_RUNTIME_DIR"
    export XDG_RUNTIME_DIR
    trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
}

# sources [PATTERN...]: the matching files of the repository, including new ones, each terminated by a zero byte; C++
# sources by default. Works whoever owns the clone. Git also lists files whose deletion is not committed; skip those.
sources() {
    [ $# -gt 0 ] || set -- '*.cpp' '*.h'
    git -c safe.directory="$top" -C "$top" ls-files -z --cached --others --exclude-standard --deduplicate "$@" |
        while IFS= read -r -d '' file; do [ ! -f "$top/$file" ] || printf '%s\0' "$file"; done
}
