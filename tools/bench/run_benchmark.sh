#!/usr/bin/env bash
# The update benchmark: `skldbm update` against the floor (benchfloor: reading the
# bytes the run needs and writing as many bytes as it wrote, nothing else), on
# generated FS2004 installations of 5,000 and 24,000 airports.
#
#   tools/bench/run_benchmark.sh [BUILD_FOLDER]     (default: build)
#
# Builds nothing: build the targets benchgen, benchfloor and skldbm first, in Release.
# Installations go to /tmp/skl-bench-AIRPORTS and are reused while their .complete
# stamp exists (rm -rf /tmp/skl-bench-* to generate them again). Each program runs
# once untimed to warm the caches, then RUNS times (default 3) timed; the table shows
# the median time and the highest peak. /usr/bin/time gives the peak memory; its
# wall time has only hundredths, so the time is taken from the nanosecond clock
# around the same call.
set -euo pipefail

build=${1:-build}
runs=${RUNS:-3}
sizes=(5000 24000)
databaseNames=(Taxi.skl Poly.skl Marker.skl Ils.skl Airport.skl Region.skl State.skl
    Country.skl City.skl)

die() {
    echo "run_benchmark: $*" >&2
    exit 1
}

[[ -x /usr/bin/time ]] ||
    die "/usr/bin/time is missing: install it with 'apt-get install time' (Debian package time)"
[[ $runs =~ ^[1-9][0-9]*$ ]] || die "RUNS must be a positive number"
[[ -d $build ]] || die "no build folder $build"
build=$(cd "$build" && pwd)
for program in benchgen benchfloor skldbm; do
    [[ -x $build/$program ]] ||
        die "$build/$program is missing: cmake --build $build --target benchgen benchfloor skldbm"
done

# The median of numbers, one per argument.
median() {
    printf '%s\n' "$@" | sort -g | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'
}

# Runs a command under /usr/bin/time; sets seconds, peakKb and status. Its output
# goes to the file named by $commandOutput.
timed() {
    local timeFile start end
    timeFile=$(mktemp)
    start=$(date +%s%N)
    set +e
    /usr/bin/time -o "$timeFile" -f '%e %M' "$@" >"$commandOutput" 2>&1
    status=$?
    set -e
    end=$(date +%s%N)
    # A command that fails makes time write a line of its own before ours.
    peakKb=$(tail -n 1 "$timeFile" | awk '{ print $2 }')
    rm -f "$timeFile"
    seconds=$(awk -v ns=$((end - start)) 'BEGIN { printf "%.3f", ns / 1e9 }')
}

# Runs a command once untimed, then $runs times timed; sets the median seconds,
# the highest peakKb and the last status.
measure() {
    local times=() peaks=() i
    timed "$@"
    for ((i = 0; i < runs; i++)); do
        timed "$@"
        times+=("$seconds")
        peaks+=("$peakKb")
    done
    seconds=$(median "${times[@]}")
    peakKb=$(printf '%s\n' "${peaks[@]}" | sort -n | tail -n 1)
}

# The installation of $1 airports, generated unless it is complete already.
generate() {
    local airports=$1 folder=/tmp/skl-bench-$1 start end summary
    if [[ -f $folder/.complete ]]; then
        echo "Using $folder: $(cat "$folder/.complete")"
        return
    fi
    rm -rf "$folder"
    start=$(date +%s%N)
    summary=$("$build/benchgen" "$folder" "$airports") || die "benchgen failed for $folder"
    end=$(date +%s%N)
    summary+="; generated in $(awk -v ns=$((end - start)) 'BEGIN { printf "%.2f", ns / 1e9 }') s"
    echo "$summary" >"$folder/.complete"
    echo "Generated $folder: $summary"
}

# Bytes of the nine database files of program folder $1, or while the run does not
# write all nine yet, the log plus the database files there are.
writtenBytes() {
    local program=$1 total=0 found=0 name
    for name in "${databaseNames[@]}"; do
        if [[ -f $program/database/FS09/$name ]]; then
            total=$((total + $(stat -c %s "$program/database/FS09/$name")))
            found=$((found + 1))
        fi
    done
    if ((found < ${#databaseNames[@]})); then
        local log=$program/SKLDBM_FS09.LOG
        [[ -f $log ]] && total=$((total + $(stat -c %s "$log")))
        writtenBasis="log + $found of 9 files"
    else
        writtenBasis="9 files"
    fi
    written=$total
}

commandOutput=$(mktemp)
trap 'rm -f "$commandOutput"' EXIT

rows=()
notes=()
declare -A runSeconds runPeakMb floorSeconds
for airports in "${sizes[@]}"; do
    generate "$airports"
    folder=/tmp/skl-bench-$airports
    sim=$folder/FS9
    program=$sim/../Skyloom

    echo "Running skldbm update on $sim ..."
    measure "$build/skldbm" update "$sim" --program-folder "$program" --quiet
    runStatus=$status
    runTime=$seconds
    runPeakKb=$peakKb
    case $runStatus in
        0) ;;
        1)
            notes+=("$airports airports: the run aborted (exit 1); the figures cover what it ran." \
                "  Last log line: $(tail -n 2 "$program/SKLDBM_FS09.LOG" | tr -d '\r' | head -n 1)")
            ;;
        *)
            cat "$commandOutput" >&2
            die "skldbm update exited $runStatus on $sim"
            ;;
    esac
    writtenBytes "$program"

    echo "Running benchfloor on $sim with $written bytes ..."
    measure "$build/benchfloor" "$sim" "$folder/floor-out" "$written"
    ((status == 0)) || {
        cat "$commandOutput" >&2
        die "benchfloor exited $status"
    }
    floorTime=$seconds

    runSeconds[$airports]=$runTime
    runPeakMb[$airports]=$(awk -v p="$runPeakKb" 'BEGIN { printf "%.1f", p / 1024 }')
    floorSeconds[$airports]=$floorTime
    rows+=("$(awk -v a="$airports" -v r="$runTime" -v p="$runPeakKb" -v f="$floorTime" \
        -v w="$written" -v b="$writtenBasis" 'BEGIN {
            ratio = f > 0 ? sprintf("%.2f", r / f) : "n/a"
            printf "%8d %9.3f %8.1f %9.3f %9s %12d  %s", a, r, p / 1024, f, ratio, w, b
        }')")
done

echo
echo "Median of $runs timed runs after one warm run; peak is the highest resident size."
printf '%8s %9s %8s %9s %9s %12s  %s\n' airports "run s" "peak MB" "floor s" run/floor \
    "written B" "counted from"
printf '%s\n' "${rows[@]}"
for note in "${notes[@]}"; do echo "$note"; done

# One target: its text, the measured value, the limit and whether the value must
# stay below it (lt) or may reach it (le).
verdict() {
    awk -v text="$1" -v value="$2" -v limit="$3" -v kind="$4" 'BEGIN {
        if (value == "n/a") { printf "  %-36s %8s  %s\n", text, value, "n/a"; exit }
        ok = kind == "lt" ? value + 0 < limit + 0 : value + 0 <= limit + 0
        printf "  %-36s %8s  %s\n", text, value, ok ? "ok" : "MISSED"
    }'
}

big=24000
ratio=$(awk -v r="${runSeconds[$big]}" -v f="${floorSeconds[$big]}" \
    'BEGIN { if (f > 0) printf "%.2f", r / f; else print "n/a" }')
scaling=$(awk -v big="${runSeconds[$big]}" -v small="${runSeconds[5000]}" \
    'BEGIN { if (small > 0) printf "%.2f", big / small; else print "n/a" }')
echo
echo "Time at 24,000 airports / time at 5,000: $scaling"
echo
echo "Targets (measured, verdict):"
verdict "run/floor at 24,000 at most 1.3" "$ratio" 1.3 le
verdict "run at 24,000 under 2 s" "${runSeconds[$big]}" 2 lt
verdict "peak at 24,000 at most 150 MB" "${runPeakMb[$big]}" 150 le
verdict "time 24,000 / 5,000 at most 5.5" "$scaling" 5.5 le
