#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Every source file of the program, its build and its tests starts with the licence's SPDX
# line (after a #! line or an XML declaration). Data the programs read (descriptions, expected
# documents, fuzz seeds) and the W3C's schema of the xml: attributes are left as they are.
# Prints the files without it.
#   check_spdx.sh <repository>
set -uo pipefail
cd "$1" || exit 2

sources() {
    find src tests bench fuzz scripts .ci cmake man contrib view schema CMakeLists.txt \
        \( -path tests/cases -o -path tests/schema/invalid -o -path tests/schema/coverage -o -path tests/view/documents \
           -o -path fuzz/seeds -o -path tests/fuzz -o -path .ci/package-contents -o -path schema/xml-namespace.xsd \) -prune -o -type f -print |
        grep -E '\.(cpp|hpp|h|def|js|cmake|in|xsl|xsd|vim|1|sh|py)$|CMakeLists\.txt$|^(scripts|\.ci|bench|fuzz)/[^./]+$|/run_case$'
}

missing=0
while read -r file; do
    head=$(head -n 2 "$file")
    first=${head%%$'\n'*}
    [[ $first == '#!'* || $first == '<?xml'* ]] || head=$first
    if [[ $head != *"SPDX-License-Identifier: Apache-2.0"* ]]; then
        echo "$file"
        missing=$((missing + 1))
    fi
done < <(sources | sort)
((missing == 0))
