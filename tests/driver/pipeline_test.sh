#!/usr/bin/env bash
# The program in a build pipeline: a write that fails (a file-size limit standing in for a
# full disk) leaves the previous document as it was and no temporary file behind; sixteen
# runs sharing one pipe for their messages give only whole lines; the file put in place
# is the one a link names, with the permissions the target had or the umask gives.
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
echo PASS
