#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The program in a build pipeline: a write that fails (a file-size limit standing in for a
# full disk) leaves the previous document as it was and no temporary file behind; sixteen
# runs sharing one pipe for their messages give only whole lines; the file put in place
# is the one a link names, with the permissions the target had or the umask gives, and a
# dangling link has the file it names made; a run interrupted while it writes leaves no
# temporary file, the previous document, and the diagnostics so far; pipes nobody reads or
# writes end a run within seconds.
#   pipeline_test.sh <program>
set -uo pipefail
program=$(realpath "$1")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch" || exit 1
fail() { echo "FAIL: $*"; exit 1; }

{ echo "MANUFACTURER 1, DEVICE_TYPE 2"; for i in $(seq 500); do echo "VARIABLE v$i { LABEL \"v$i\"; }"; done; } >quiet.ddl
echo previous >quiet.xml
(ulimit -f 8; exec "$program" quiet.ddl -o quiet.xml) >/dev/null 2>messages.txt
status=$?
((status == 12)) || fail "status $status under a file-size limit"
expected="Encountered a fatal error: XML: could not save the document to quiet.xml: File too large.(std::logic_error)"
[[ $(cat messages.txt) == "$expected" ]] || fail "message: $(cat messages.txt)"
[[ $(cat quiet.xml) == previous ]] || fail "the previous document changed"
[[ -z $(find . -name '.tarnwick-*') ]] || fail "a temporary file was left"

{ echo "MANUFACTURER 1, DEVICE_TYPE 2"; for i in $(seq 500); do echo "VARIABLE v$i { LABEL { \"v$i\", } }"; done; } >main.ddl
"$program" main.ddl -o alone.xml 2>alone.txt >/dev/null
(($(wc -l <alone.txt) == 500)) || fail "$(wc -l <alone.txt) warnings, expected 500"
for i in $(seq 16); do "$program" main.ddl -o "out$i.xml" 2>&1 >/dev/null & done | cat >shared.txt
diff <(sort shared.txt) <(for i in $(seq 16); do cat alone.txt; done | sort) >/dev/null ||
    fail "lines of parallel runs were broken up"
echo previous >real.xml
chmod 640 real.xml
ln -s real.xml link.xml
"$program" main.ddl -o link.xml >/dev/null 2>&1 || fail "status $? writing through a link"
[[ -L link.xml ]] || fail "the link was replaced"
grep -q '<EDDL' real.xml || fail "the file the link names did not get the document"
[[ $(stat -c %a real.xml) == 640 ]] || fail "the replaced file's mode became $(stat -c %a real.xml)"
(umask 027 && exec "$program" main.ddl -o new.xml >/dev/null 2>&1)
[[ $(stat -c %a new.xml) == 640 ]] || fail "a new file's mode is $(stat -c %a new.xml) under umask 027"
rm -f dangling.xml && mkdir made && ln -s made/new.xml dangling.xml
"$program" main.ddl -o dangling.xml >/dev/null 2>&1 || fail "status $? writing through a dangling link"
[[ -L dangling.xml ]] && grep -q '<EDDL' made/new.xml || fail "a dangling link was not written through"

# Killed while the document goes into a pipe nobody empties, with the dump's temporary file
# beside: the signal's status, no file left or changed, the -e file with what it received.
mkdir big logs && cd big || exit 1
{ echo "MANUFACTURER 1, DEVICE_TYPE 2"; for i in $(seq 20000); do echo "VARIABLE v$i { LABEL { \"v$i\", } CLASS LOCAL; TYPE INTEGER; }"; done; } >big.ddl
mkfifo full
exec 3<>full
for signal in TERM HUP INT; do
    echo previous >big.txt
    # Without job control a shell starts background jobs with SIGINT ignored, and the
    # program keeps it so, as nohup and the like expect.
    set -m
    "$program" big.ddl -o full -t big.txt -e ../logs/$signal.txt >/dev/null 2>&1 &
    set +m
    for ((i = 0; i < 2000; i++)); do compgen -G '.tarnwick-*' >/dev/null && break; sleep 0.01; done
    sleep 0.2
    kill -$signal $!
    wait $!
    status=$?
    expected=$((128 + $(kill -l $signal)))
    ((status == expected)) || fail "status $status after SIG$signal, expected $expected"
    [[ $(cat big.txt) == previous ]] || fail "SIG$signal changed the dump"
    [[ -z $(find . ../logs -name '.tarnwick-*') ]] || fail "SIG$signal left a temporary file"
    (($(wc -l <../logs/$signal.txt) == 20000)) || fail "SIG$signal: the -e file lacks the warnings"
done
exec 3<&-
# A closed pipe ends the run as it would any program, taking the dump's temporary file along.
rm -f big.txt
"$program" big.ddl -o /dev/stdout -t big.txt 2>/dev/null | head -c 100 >/dev/null
((PIPESTATUS[0] == 141)) || fail "status ${PIPESTATUS[0]} writing into a closed pipe"
[[ -z $(find . -name '.tarnwick-*') && ! -e big.txt ]] || fail "a closed pipe left a file"
cd .. || exit 1

mkfifo nobody
start=$SECONDS
"$program" quiet.ddl -o nobody >/dev/null 2>messages.txt
status=$?
expected="Encountered a fatal error: XML: could not save the document to nobody: no process reads from it.(std::logic_error)"
((status == 12)) && [[ $(cat messages.txt) == "$expected" ]] || fail "writing to a pipe nobody reads: $status $(cat messages.txt)"
"$program" nobody >/dev/null 2>messages.txt
status=$?
((status == 153)) && [[ $(cat messages.txt) == "File nobody is a pipe or device that sent nothing for a second." ]] ||
    fail "reading a pipe nobody writes: $status $(cat messages.txt)"
((SECONDS - start < 5)) || fail "pipes took $((SECONDS - start)) s"
truncate -s 1025M huge.ddl
"$program" huge.ddl >/dev/null 2>messages.txt
status=$?
((status == 153)) && [[ $(cat messages.txt) == "File huge.ddl is larger than 1 GiB." ]] || fail "a huge file: $status $(cat messages.txt)"
{ sleep 0.2; cat quiet.ddl; } | "$program" /dev/stdin -o piped.xml >/dev/null 2>&1 || fail "status $? reading a pipe"
"$program" quiet.ddl -o read.xml >/dev/null 2>&1
cmp -s piped.xml read.xml || fail "a description read from a pipe gave another document"
echo PASS
