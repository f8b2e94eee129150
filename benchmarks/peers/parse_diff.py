#!/usr/bin/python3
"""Debian's python3-unidiff on the diff texts in the given files; one line of JSON per file."""

import json
import pathlib
import sys
import time

from unidiff import PatchSet


def main() -> None:
    for name in sys.argv[1:]:
        data = pathlib.Path(name).read_bytes()
        start = time.perf_counter()
        lines = sum(len(hunk) for file in PatchSet(data.decode()) for hunk in file)
        seconds = time.perf_counter() - start
        if lines == 0:
            raise SystemExit(f"unidiff found no lines in {name}")
        print(json.dumps({
            "workload": f"ParseUnifiedDiff/{pathlib.Path(name).stem}",
            "peer": "python3-unidiff", "items": len(data), "seconds": seconds,
        }), flush=True)


main()
