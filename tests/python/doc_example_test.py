#!/usr/bin/python3
"""The examples of docs/python.md, run as written and compared with the output shown there.

Every ```python block of the page runs, in order, in one namespace, from the repository's root
with the build tree's package on the path; the ```text block that follows each is its exact
output (trailing blanks of a line aside, which editors drop). A block that needs pandas is
skipped, with the rest, when pandas is not installed.

    doc_example_test.py --package-dir BUILD/python --source-dir REPO
"""
import argparse
import json
import os
import re
import subprocess
import sys
import unittest

ARGS = None

FENCE = re.compile(r"^```(\w*)\n(.*?)^```\n", re.MULTILINE | re.DOTALL)

# Runs the blocks given as a JSON list on standard input and prints their outputs as a JSON list.
RUNNER = r'''
import contextlib, io, json, sys
blocks = json.load(sys.stdin)
namespace = {"__name__": "__main__"}
outputs = []
for number, block in enumerate(blocks):
    captured = io.StringIO()
    with contextlib.redirect_stdout(captured):
        exec(compile(block, "docs/python.md, example %d" % (number + 1), "exec"), namespace)
    outputs.append(captured.getvalue())
print(json.dumps(outputs))
'''


def examples(page):
    """The (code, shown output) pairs of the page."""
    blocks = FENCE.findall(page)
    pairs = []
    for index, (language, text) in enumerate(blocks):
        if language != "python":
            continue
        if index + 1 >= len(blocks) or blocks[index + 1][0] != "text":
            raise AssertionError("python block %d of docs/python.md is not followed by a text "
                                 "block with its output" % (len(pairs) + 1))
        pairs.append((text, blocks[index + 1][1]))
    return pairs


def have_pandas():
    try:
        import pandas  # noqa: F401
    except ImportError:
        return False
    return True


def without_trailing_blanks(text):
    return "\n".join(line.rstrip() for line in text.split("\n"))


class DocExampleTest(unittest.TestCase):
    def test_the_examples_print_what_the_page_shows(self):
        with open(os.path.join(ARGS.source_dir, "docs", "python.md")) as f:
            pairs = examples(f.read())
        self.assertEqual(len(pairs), 3)
        if not have_pandas():
            pairs = [pair for pair in pairs if "to_dataframe" not in pair[0]]
        env = {key: value for key, value in os.environ.items() if key != "QVDIAG"}
        env["PYTHONPATH"] = ARGS.package_dir
        run = subprocess.run([sys.executable, "-c", RUNNER], cwd=ARGS.source_dir, env=env,
                             input=json.dumps([code for code, _ in pairs]),
                             stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                             timeout=240)
        self.assertEqual(run.returncode, 0, run.stderr)
        outputs = json.loads(run.stdout)
        for number, ((_, shown), printed) in enumerate(zip(pairs, outputs), start=1):
            with self.subTest(example=number):
                self.assertEqual(without_trailing_blanks(printed),
                                 without_trailing_blanks(shown))


def main():
    global ARGS
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--package-dir", required=True)
    parser.add_argument("--source-dir", required=True)
    ARGS, rest = parser.parse_known_args()
    ARGS.package_dir = os.path.abspath(ARGS.package_dir)
    ARGS.source_dir = os.path.abspath(ARGS.source_dir)
    unittest.main(argv=[sys.argv[0]] + rest, verbosity=2)


if __name__ == "__main__":
    main()
