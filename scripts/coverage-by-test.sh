#!/usr/bin/env bash
# Line coverage of src/ by each test function alone, to find cases that only repeat others before
# merging or dropping them. Needs a coverage build (README, "Two commands"):
#   scripts/coverage-by-test.sh build-cov [test names as ctest knows them; all QTest programs
#   when none is named]
# Each function runs as ctest would run its program (same wrapper, environment and folder) and
# leaves <build>/coverage-by-test/<test>.<function>.json (gcovr JSON). The table printed at the end
# gives, for each function, the lines of src/ that no other function of those runs covers.
set -euo pipefail
build=$(realpath "$1")
shift
export BUILD=$build OUT=${OUT:-$build/coverage-by-test} ROOT=$(realpath "$(dirname "$0")/..")
mkdir -p "$OUT"
ctest --test-dir "$build" --show-only=json-v1 > "$OUT/tests.json"
python3 - "$@" <<'PY'
import collections, glob, json, os, subprocess, sys
build, out, root = os.environ['BUILD'], os.environ['OUT'], os.environ['ROOT']
wanted = set(sys.argv[1:])
for test in json.load(open(os.path.join(out, 'tests.json')))['tests']:
    command = test['command']
    if not command[-1].startswith(build) or (wanted and test['name'] not in wanted):
        continue  # the source checks run CMake scripts, not QTest programs
    properties = {p['name']: p['value'] for p in test.get('properties', [])}
    env = dict(os.environ, **dict(e.split('=', 1) for e in properties.get('ENVIRONMENT', [])))
    folder = properties.get('WORKING_DIRECTORY', build)
    listed = subprocess.run(command + ['-functions'], env=env, cwd=folder, capture_output=True,
                            text=True).stdout.split()
    for function in (line[:-2] for line in listed if line.endswith('()')):
        for stale in glob.glob(os.path.join(build, '**', '*.gcda'), recursive=True):
            os.remove(stale)
        subprocess.run(command + [function], env=env, cwd=folder, capture_output=True)
        subprocess.run(['gcovr', '--root', root, '--filter', os.path.join(root, 'src') + '/',
                        '--json', os.path.join(out, '%s.%s.json' % (test['name'], function)),
                        os.path.join(build, 'src')], capture_output=True, check=True)
covered = {}
for path in glob.glob(os.path.join(out, '*.*.json')):
    data = json.load(open(path))
    covered[os.path.basename(path)[:-5]] = {
        (f['file'], l['line_number']) for f in data['files'] for l in f['lines'] if l['count']}
count = collections.Counter(line for lines in covered.values() for line in lines)
for name, lines in sorted(covered.items()):
    print('%5d only here  %5d covered  %s' % (sum(count[l] == 1 for l in lines), len(lines), name))
PY
