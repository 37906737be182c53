#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The HTML view of documents the converter writes: the bundled examples, the description of
# the checker's golden cases (which has problems to show) and a generated large description.
# Each view must be well-formed HTML whose every in-page link has its anchor (`documents`);
# and a real browser must show it without console errors, in the language asked for, and
# not blank (`browser`, skipped with status 77 when Chromium cannot run here).
#
#   view_test.sh documents|browser <tarnwick> <repository> <description generator>
set -euo pipefail

mode=$1
tarnwick=$(realpath "$2")
repo=$(realpath "$3")
generator=$(realpath "$4")
stylesheet=$repo/view/tarnwick-html.xsl
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

if [[ $mode == browser ]]; then
    chromium=$(command -v chromium || command -v chromium-browser || true)
    [[ -n $chromium ]] || { echo "chromium not found (scripts/setup-deps installs it)"; exit 77; }
fi

# view <name> <lang> <expected texts, |-separated> <converter arguments...>
views=()
view() {
    local name=$1 lang=$2 expected=$3
    shift 3
    "$tarnwick" "$@" -o "$name.xml" >/dev/null 2>"$name.diagnostics"
    xsltproc --stringparam lang "$lang" "$stylesheet" "$name.xml" >"$name.html"
    views+=("$name.html=$expected")
}
examples=$repo/examples
view flow_switch de "Schaltpunkt|Schaltzustand|Anschluss" \
    -p HART "$examples/hart/flow_switch.ddl" -d "$examples/hart/flow_switch.dct"
view pressure_transmitter "" "Pressure unit|Upper range value" -p HART -I "$examples/hart" "$examples/hart/pressure_transmitter.ddl"
view temperature_transmitter "" "TW-300 temperature transmitter|Sensor connection|Cold junction compensation" \
    -p HART -I "$examples/hart" "$examples/hart/temperature_transmitter.ddl"
view level_transmitter de "Decimal places" -p PROFIBUS -I "$examples/profibus" "$examples/profibus/level_transmitter.ddl"
cp -R "$repo/tests/cases/fail_check_defaults/input" problems
view problems de "Gerät|Einstellungen|Druck|Problems (11)|seting" -p none problems/device.ddl -d problems/device.dct
"$generator" generated 30 >/dev/null
view generated "" "TW-900|Field device status" -p HART generated/tw900.ddl -d generated/tw900.dct

if [[ $mode == documents ]]; then
    failed=0
    for html in *.html; do
        if ! xmllint --html --noout "$html" 2>"$html.errors" || [[ -s $html.errors ]]; then
            echo "$html is not well-formed HTML:"
            head -n 5 "$html.errors"
            failed=1
        fi
    done
    # The views are machine-written: attributes are found by their exact spelling.
    for html in *.html; do
        grep -o ' id="[^"]*"' "$html" | sed 's/^ id="//; s/"$//' | sort >"$html.anchors"
        grep -o ' href="#[^"]*"' "$html" | sed 's/^ href="#//; s/"$//' | sort -u >"$html.links"
        twice=$(uniq -d "$html.anchors" | head -n 3)
        unanchored=$(comm -13 "$html.anchors" "$html.links" | head -n 3)
        [[ -z $twice ]] || { echo "$html: anchors given twice: $twice"; failed=1; }
        [[ -z $unanchored ]] || { echo "$html: links without anchor: $unanchored"; failed=1; }
        echo "$html: $(wc -l <"$html.links") link targets, $(wc -l <"$html.anchors") anchors"
    done
    exit $failed
fi

command -v node >/dev/null || { echo "node not found (scripts/setup-deps installs it)"; exit 77; }
mkdir profile screenshots
node "$repo/tests/view/browser_check.js" "$chromium" "$scratch/profile" "$scratch/screenshots" "${views[@]}"
