#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What the Windows build shows beyond the golden cases, under wine: the bundled examples
# give the documents kept beside them; a large item table grows in place; cmd's %ERRORLEVEL%
# sees the full exit statuses; the usage line names the program as Windows started it; an
# output another program holds open is refused as a failed save, the old file kept and no
# temporary left.
#   windows_test.sh <wine> <tarnwick.exe> <repository>
set -uo pipefail
wine=$1
program=$(realpath "$2")
repo=$(realpath "$3")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch" || exit 1
fail() { echo "FAIL: $*"; exit 1; }

example() {
    local profile=$1 directory=$repo/examples/$2 input=$3
    shift 3
    "$wine" "$program" -p "$profile" -I "$directory" "$directory/$input.ddl" "$@" -o "$input.xml" >/dev/null 2>errors.txt ||
        fail "example $input: status $?: $(cat errors.txt)"
    [[ ! -s errors.txt ]] || fail "example $input: $(cat errors.txt)"
    cmp -s "$input.xml" "$directory/$input.xml" || fail "example $input differs from the document kept beside it"
}
example HART hart pressure_transmitter
example HART hart temperature_transmitter
example PROFIBUS profibus level_transmitter
example HART hart flow_switch -d "$repo/examples/hart/flow_switch.dct"

# Enough items to leave the heap: the item table then grows inside reserved address space,
# committed piece by piece, which only a large description reaches.
awk 'BEGIN { print "MANUFACTURER 1, DEVICE_TYPE 2"
    for (i = 1; i <= 20000; i++) printf "VARIABLE v%d { LABEL \"x\"; CLASS LOCAL; TYPE INTEGER; }\n", i }' >many.ddl
"$wine" "$program" many.ddl -o many.xml >/dev/null 2>errors.txt || fail "20,000 items: status $?: $(cat errors.txt)"
[[ ! -s errors.txt ]] || fail "20,000 items: $(cat errors.txt)"
ids=$(grep -o '<VARIABLE id="v[0-9]*">' many.xml)
[[ $(wc -l <<<"$ids") == 20000 && $(sort -u <<<"$ids" | wc -l) == 20000 ]] || fail "20,000 items: not every item written once"
LC_ALL=C sort -c <<<"$ids" || fail "20,000 items: not written in the order of their names"

cp "$program" tarnwick.exe
printf 'MANUFACTURER 1, DEVICE_TYPE 2\nVARIABLE v { LABEL "x"; CLASS LOCAL; TYPE INTEGER; }\n' >good.ddl
printf 'MANUFACTURER 1, DEVICE_TYPE 2\nVARIABLE v { LABEL "x"; TYPE INTEGR; }\n' >bad.ddl
printf 'MANUFACTURER 1, DEVICE_TYPE 2\nIMAGE i { PATH [key]; }\n' >fatal.ddl
while read -r expected arguments; do
    status=$("$wine" cmd /c "tarnwick.exe $arguments >nul 2>nul & echo %ERRORLEVEL%" | tr -d '\r')
    [[ $status == "$expected" ]] || fail "%ERRORLEVEL% $status for '$arguments', expected $expected"
done <<'END'
0 good.ddl
1 -h
-101 good.ddl -o
-102 bad.ddl
-103 missing.ddl
-500 fatal.ddl -p HART
END
usage=$("$wine" cmd /c "tarnwick.exe" | sed -n 3p | tr -d '\r')
[[ $usage == "Usage: tarnwick.exe [options] file" ]] || fail "usage line: $usage"
# cmd holds held.xml open (without leave to delete it) while more waits for its input.
( (echo old; sleep 15) | "$wine" cmd /c "more > held.xml" ) &
holder=$!
for _ in $(seq 100); do grep -q old held.xml 2>/dev/null && break; sleep 0.2; done
status=$("$wine" cmd /c "tarnwick.exe good.ddl -o held.xml >nul 2>held.txt & echo %ERRORLEVEL%" | tr -d '\r')
kill "$holder" 2>/dev/null; wait "$holder" 2>/dev/null
[[ $status == -500 ]] || fail "an output held open elsewhere: status $status"
grep -q "could not save the document to held.xml" held.txt || fail "an output held open elsewhere: $(cat held.txt)"
[[ $(tr -d '\r' <held.xml) == old ]] || fail "an output held open elsewhere was changed"
! compgen -G '.tarnwick-*' >/dev/null || fail "a temporary was left beside an output held open elsewhere"
echo PASS
