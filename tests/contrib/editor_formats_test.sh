#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The editor integrations in contrib/ read the program's real diagnostics: every line shape
# (parser, preprocessor, lexer, imported duplicate, LIKE, the checker's findings), in a
# directory whose name has a
# blank and parentheses, goes to the right file, line, severity and message in vim's
# quickfix list (contrib/vim, through :make, so the banner on standard output is there too
# and -c comes last) and through VS Code's problem matcher, whose regular expression runs
# here in node, VS Code's own engine. Exits 77 (skipped) without vim or node.
#
#   editor_formats_test.sh <program> <repository>
set -euo pipefail

program=$(realpath "$1")
repo=$(realpath "$2")
command -v vim >/dev/null && vim --version | grep -q '+quickfix' || { echo "vim with +quickfix not found"; exit 77; }
command -v node >/dev/null || { echo "node not found"; exit 77; }
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

mkdir "dir (a)"
cat >"dir (a)/main.ddl" <<'DDL'
MANUFACTURER 1, DEVICE_TYPE 2, DEVICE_REVISION 1, DD_REVISION 1
#line 7
VARIABLE v { TYPE INTEGER; }
IMPORT "lib.ddl" { EVERYTHING; }
x LIKE VARIABLE missing { }
#include "none.h"
MENU m { HANDLING READ; LABEL "m"; ITEMS { v } }
VARIABLE w { TYPE INTEGER; } \ trailing
DDL
printf 'MANUFACTURER 1, DEVICE_TYPE 2, DEVICE_REVISION 1, DD_REVISION 1\n\nVARIABLE v { TYPE INTEGER; }\n' >"dir (a)/lib.ddl"
"$program" "dir (a)/main.ddl" -o out.xml -c >/dev/null 2>diagnostics.txt || true
# The parser's information shape, which no message uses at present.
information="dir (a)/main.ddl(1): information: note"
echo "$information" >>diagnostics.txt
# What vim's :make finds on the PATH: the program, then that line.
mkdir bin
printf '#!/bin/sh\n"%s" "$@"; status=$?; echo "%s" >&2; exit $status\n' "$program" "$information" >bin/tarnwick
chmod +x bin/tarnwick

cat >expected.txt <<'EXPECTED'
dir (a)/main.ddl|2|w|Preprocessor directive 'line' is not implmented.
dir (a)/lib.ddl|3|e|Duplicate definition of object v. Obejct was previusly defined at dir (a)/main.ddl(3). 
dir (a)/main.ddl|6|e|Could not find or read include file none.h.
dir (a)/main.ddl|7|e|HANDLING is not allowd on object of type MENU
dir (a)/main.ddl|8|e|Trailing '\'.
dir (a)/main.ddl|5|e|missing is not defined but is referenced in x LIKE 
dir (a)/main.ddl|1|i|note
EXPECTED

# The lines that continue a message stay plain text; the banner and its empty line go.
printf 'Include path is:\ndir (a)\n' >expected-plain.txt

PATH="$scratch/bin:$PATH" vim -u NONE -i NONE -N -es --cmd "set runtimepath^=$repo/contrib/vim" \
    -c 'edit dir\ (a)/main.ddl' -c 'compiler tarnwick' -c 'silent make! -o out.xml -c' \
    -c 'call writefile(map(filter(getqflist(), "v:val.valid"), {_, e -> join([bufname(e.bufnr), e.lnum, tolower(e.type), e.text], "|")}), "vim.txt")' \
    -c 'call writefile(map(filter(getqflist(), "!v:val.valid"), "v:val.text"), "vim-plain.txt")' \
    -c 'qa!' >/dev/null
# vscode_matches <task> <file>: what the problem matcher of that task finds in the file.
vscode_matches() {
    node -e '
        const fs = require("fs");
        const pattern = JSON.parse(fs.readFileSync(process.argv[1], "utf8")).tasks[process.argv[2]].problemMatcher.pattern;
        const expression = new RegExp(pattern.regexp);
        for (const line of fs.readFileSync(process.argv[3], "utf8").split("\n")) {
            const m = expression.exec(line);
            if (m) console.log([m[pattern.file], m[pattern.line], m[pattern.severity][0].toLowerCase(), m[pattern.message]].join("|"));
        }' "$repo/contrib/vscode/tasks.json" "$1" "$2"
}
vscode_matches 0 diagnostics.txt >vscode.txt

# The checker's findings through its own vim compiler and VS Code task; its summary line is
# no message.
printf 'MANUFACTURER 1, DEVICE_TYPE 2, DEVICE_REVISION 1, DD_REVISION 1\n\nMENU m { ITEMS { nothing } }\n' >"dir (a)/check.ddl"
"$(dirname "$program")/tarnwick-check" "dir (a)/check.ddl" >findings.txt || true
echo 'dir (a)/check.ddl|3|w|nothing is not defined (ITEMS of m) [undefined-reference]' >expected-check.txt
vim -u NONE -i NONE -N -es --cmd "set runtimepath^=$repo/contrib/vim" -c 'compiler tarnwick-check' \
    -c 'cgetfile findings.txt' \
    -c 'call writefile(map(getqflist(), {_, e -> join([bufname(e.bufnr), e.lnum, tolower(e.type), e.text], "|")}), "vim-check.txt")' \
    -c 'qa!' >/dev/null
vscode_matches 1 findings.txt >vscode-check.txt

failed=0
for editor in vim vscode; do
    diff -u --label expected --label "$editor" expected.txt "$editor.txt" || failed=1
done
diff -u --label expected --label "vim, plain lines" expected-plain.txt vim-plain.txt || failed=1
for editor in vim vscode; do
    diff -u --label expected --label "$editor, checker" expected-check.txt "$editor-check.txt" || failed=1
done
exit $failed
