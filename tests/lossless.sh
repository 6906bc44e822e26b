#!/usr/bin/env bash
# The law of exact copies over real files: lossless.sh TOOL. A copy has every record and value of its
# file but for what its log names, as a reader of another make sees it (`python3 $OVIK_LOSSLESS IN OUT LOG`
# ends with 0); without a log the two compare equal; and the copy of the copy is the same, byte for
# byte. Without that reader, or real files in OVIK_CORPUS, it is skipped (77).
set -euo pipefail

# one TOOL FOLDER FILE
one() {
    local tool=$1 to file=$3
    to=$(mktemp -d "$2/XXXXXX")
    "$tool" copy "$file" "$to/a.ifc" --log "$to/log" >/dev/null 2>&1 || { echo "not copied: $file"; return; }
    if [ ! -e "$to/log" ]; then
        : >"$to/log"
        "$tool" compare "$file" "$to/a.ifc" >/dev/null 2>&1 || echo "compares unequal: $file"
    fi
    python3 "$OVIK_LOSSLESS" "$file" "$to/a.ifc" "$to/log" >"$to/said" 2>&1 ||
        { echo "not as it was: $file"; cat "$to/said"; }
    "$tool" copy "$to/a.ifc" "$to/b.ifc" >/dev/null 2>&1
    cmp -s "$to/a.ifc" "$to/b.ifc" || echo "the copy of the copy differs: $file"
    rm -r "$to"
}
export -f one

if [ ! -d "${OVIK_CORPUS:-}/valid" ] || [ ! -r "${OVIK_LOSSLESS:-}" ]; then
    echo "skipped: OVIK_CORPUS and OVIK_LOSSLESS name no files and no reader"
    exit 77
fi
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
find "$OVIK_CORPUS/valid" -name '*.ifc' -print0 |
    xargs -0 -P 2 -I{} bash -c 'one "$@"' one "$1" "$folder" {} >"$folder/faults"
cat "$folder/faults"
[ ! -s "$folder/faults" ]
