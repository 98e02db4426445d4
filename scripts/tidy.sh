#!/usr/bin/env bash
# Runs clang-tidy, as .clang-tidy says, over FILES; without arguments over everything in src, tests
# and bench that the preset release compiles. It must be built: the build makes some of the headers.
# With --quick over src, and without the analyzer, which takes most of the time.
# A file that was found clean is not looked at again until it, a header of it or the rules change.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh clang-14 clang-tidy-14 python3
exec python3 - "$@" <<'EOF'
import hashlib, json, os, re, shlex, subprocess, sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

root, out = Path.cwd(), Path("build/tidy")
database = Path("build/compile_commands.json")
if not database.exists():
    sys.exit("Build first: scripts/build.sh")

# A file of several programs once, and without what only the compiler of the build understands.
rows = {}
for row in json.loads(database.read_text()):
    name = os.path.relpath(row["file"], root)
    if name.split("/")[0] in ("src", "tests", "bench"):
        row["command"] = re.sub(r"-Winvalid-pch |-include \S+/cmake_pch\.hxx ", "", row["command"])
        rows[name] = row
out.mkdir(exist_ok=True)
(out / "compile_commands.json").write_text(json.dumps(list(rows.values())))

named = sys.argv[1:]
quick = named[:1] == ["--quick"]
if quick:
    named = [name for name in sorted(rows) if name.startswith("src/")]
files = [os.path.relpath(name, root) for name in named] or sorted(rows)
unknown = [name for name in files if name not in rows]
if unknown:
    sys.exit("Not compiled by the preset release: " + " ".join(unknown))


def key(name):
    """Stands for the rules and all that the compiler sees, comments too: a NOLINT is one."""
    words = shlex.split(rows[name]["command"])
    words = ["clang++-14"] + words[1 : words.index("-o")] + ["-E", "-C", "-w", name]
    seen = subprocess.run(words, capture_output=True).stdout  # clang-tidy says what stops it
    rules = Path(".clang-tidy").read_bytes() + (b"quick" if quick else b"")
    return out / hashlib.sha256(rules + seen).hexdigest()


def check(name):
    """Says what is wrong with a file; nothing when it is clean."""
    clean = key(name)
    if clean.exists():
        return ""
    command = ["clang-tidy-14", "-p", str(out), "--quiet", "--extra-arg=-Wno-unknown-warning-option"]
    # The analyzer follows every path. Through the macros of the test framework that takes four times
    # as long as all other checks, and finds only how a test might fail. Fixtures name their fields
    # as suits their tests.
    if quick:
        command.append("--checks=-clang-analyzer-*")
    elif not name.startswith("src/"):
        command.append("--checks=-clang-analyzer-*,-readability-identifier-naming")
    result = subprocess.run(command + [name], capture_output=True, text=True)
    # With rules that it cannot read clang-tidy goes on without them, and is content.
    if result.returncode == 0 and "Error parsing" not in result.stderr:
        clean.touch()
        return ""
    return result.stdout + re.sub(r"(?m)^\d+ warnings?.*\n", "", result.stderr)


wrong = 0
with ThreadPoolExecutor(os.cpu_count()) as pool:
    for findings in pool.map(check, files):
        print(findings, end="", flush=True)
        wrong += findings != ""
print(f"{len(files) - wrong} of {len(files)} files are clean")
sys.exit(1 if wrong else 0)
EOF
