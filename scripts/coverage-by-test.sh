#!/usr/bin/env bash
# Line coverage of src/ by each test function alone, to find cases that only repeat others before
# merging or dropping them. Needs a coverage build (README, "Two commands"):
#   scripts/coverage-by-test.sh build-cov tests/history/testhistoryfile [more test programs]
# Writes <out>/<program>.<function>.json (gcovr JSON) and prints, for each function, the lines
# of src/ that no other function of the given programs covers.
set -euo pipefail
build=$1
shift
out=${OUT:-$build/coverage-by-test}
mkdir -p "$out"
for program in "$@"; do
    name=$(basename "$program")
    for function in $(QT_QPA_PLATFORM=offscreen "$build/$program" -functions 2>/dev/null | sed 's/()//'); do
        find "$build" -name '*.gcda' -delete
        QT_QPA_PLATFORM=offscreen "$build/$program" "$function" > /dev/null 2>&1 || true
        gcovr --root . --filter src/ --json "$out/$name.$function.json" "$build/src" > /dev/null
    done
done
python3 - "$out" <<'PY'
import collections, glob, json, os, sys
covered = {}
for path in glob.glob(os.path.join(sys.argv[1], '*.json')):
    data = json.load(open(path))
    covered[os.path.basename(path)[:-5]] = {
        (f['file'], l['line_number']) for f in data['files'] for l in f['lines'] if l['count']}
count = collections.Counter(line for lines in covered.values() for line in lines)
for name, lines in sorted(covered.items(), key=lambda item: item[0]):
    print('%5d only here  %5d covered  %s' % (sum(count[l] == 1 for l in lines), len(lines), name))
PY
