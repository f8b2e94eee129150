#!/usr/bin/python3
"""Runs the benchmarks and their peers in rounds, and prints how they compare.

    compare.py BUILD_FOLDER RESULTS_FOLDER ROUNDS

Each round runs every program once, so that what else the machine does falls on all alike. A ratio is
made within a round; the table has the median of the rounds, the lowest and the highest. Samples are
seconds for one pass over the workload, but for the rows that say otherwise. What takes long is run
in the first round only, which its row says.
"""

from __future__ import annotations

import dataclasses
import json
import pathlib
import statistics
import subprocess
import sys

import programs

PEERS = pathlib.Path(__file__).parent / "peers"
UNITS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}
DIFFS = {
    "manyHunks1MB": "1 MB, many hunks",
    "manyHunks20MB": "20 MB, many hunks",
    "oneHunk20MB": "20 MB, one hunk",
}
NPM_PARSERS = ("diff2html", "gitdiff-parser", "parse-diff")

# What one round measured: a name for each figure.
Round = dict[str, float]


@dataclasses.dataclass(frozen=True)
class Row:
    """One line of the table: `numerator / denominator` within each round."""

    workload: str
    compared_with: str
    numerator: str
    denominator: str  # Empty: the figure itself.
    unit: str
    goal: float | None = None
    more_is_better: bool = True

    def values(self, rounds: list[Round]) -> list[float]:
        return [
            figures[self.numerator] / (figures[self.denominator] if self.denominator else 1)
            for figures in rounds if self.numerator in figures
        ]

    def remark(self, rounds: list[Round]) -> str:
        """What must be known of the figures."""
        remarks = []
        if any(f"{self.numerator}/stopped" in figures for figures in rounds):
            remarks.append(f"stopped at {programs.LIMIT_SECONDS} s")
        if len(self.values(rounds)) < len(rounds):
            remarks.append("once")
        return f" ({', '.join(remarks)})" if remarks else ""

    def verdict(self, median: float) -> str:
        if self.goal is None:
            return ""
        is_met = median >= self.goal if self.more_is_better else median <= self.goal
        sign = "at least" if self.more_is_better else "at most"
        return f"{sign} {self.goal:g}: {'met' if is_met else 'MISSED'}"


def table() -> list[Row]:
    rows = []
    for shape, words in DIFFS.items():
        workload = f"parse a diff, {words}"
        ours = f"BM_ParseUnifiedDiff/{shape}"
        rows.append(Row(workload, "libgit2", f"BM_Libgit2ParseDiff/{shape}", ours, "x speed", 1))
        for name in NPM_PARSERS:
            peer = f"ParseUnifiedDiff/{shape}/npm {name}"
            rows.append(Row(workload, f"npm {name}", peer, ours, "x speed", 8))
        peer = f"ParseUnifiedDiff/{shape}/python3-unidiff"
        rows.append(Row(workload, "python3-unidiff", peer, ours, "x speed"))
        rows.append(Row(workload, "limit: memchr", ours, f"BM_FindLineFeeds/{shape}", "x time",
                        more_is_better=False))
        rows.append(Row(workload, "memory beside the text", f"{ours}/recordBytesPerLine", "",
                        "bytes/line", 48, more_is_better=False))
    for shape, words in DIFFS.items():
        workload = f"align its rows, {words}"
        ours = f"BM_AlignRows/{shape}"
        rows.append(Row(workload, "parsing it", ours, f"BM_ParseUnifiedDiff/{shape}", "x time", 2,
                        more_is_better=False))
        rows.append(Row(workload, "limit: copy of the rows", ours, f"BM_WriteRows/{shape}",
                        "x time", more_is_better=False))
    listing = "BM_ChangedFiles/1000/1000/iterations:1/manual_time"
    for figure, words in (("ratio_to_bare", ""), ("processor_ratio_to_bare", ", processor")):
        rows.append(Row("list 2,000 changed files", f"bare posix_spawn{words}",
                        f"{listing}/{figure}", "", "x time", None if words else 1.05,
                        more_is_better=False))
    workload = "decode 200,000 streamed chunks"
    ours = "BM_DecodeEventStream"
    rows += [
        Row(workload, "npm openai", "DecodeEventStream/npm openai", ours, "x speed", 4),
        Row(workload, "npm eventsource-parser", "DecodeEventStream/npm eventsource-parser", ours,
            "x speed"),
        Row(workload, "QJsonDocument a line", f"{ours}/peer:QJsonDocument", ours, "x speed"),
        Row(workload, "limit: memchr", ours, f"{ours}/limit:memchr", "x time",
            more_is_better=False),
    ]
    workload = "read an explanation of 1 MB"
    ours = "BM_ParseExplanation/deltaCharacters/1"
    rows += [
        Row(workload, "itself, in million characters/s", f"{ours}/millions", "", "M/s", 5),
        Row(workload, "limit: append", ours, "BM_ParseExplanation/limit:append", "x time",
            more_is_better=False),
        Row("draw the next page, 200,000 lines", "the same, 200 lines", "BM_DrawNextPage/200000",
            "BM_DrawNextPage/200", "x time", more_is_better=False),
        # Linear, with room for the larger text's misses in the processor's cache.
        Row("read 100,000 hostile characters", "half as many", "BM_ReadHostileMarkdown/100000",
            "BM_ReadHostileMarkdown/50000", "x time", 2.5, more_is_better=False),
    ]
    return rows + start_rows() + large_rows() + frame_rows()


def start_rows() -> list[Row]:
    """From process start to what is on the screen."""
    first_frame = "start to picker; peers: any picture"
    picker = f"start/picker/{programs.FOLDER_SEEN}"
    rows = [Row(first_frame, peer, f"start/{peer}/painted", picker, "x speed", 1)
            for peer in ("meld", "kdiff3", "git-cola")]
    rows.append(Row("start to the list of changes", "git-cola",
                    f"start/git-cola/{programs.FILE_SEEN}", f"start/vantrel/{programs.FILE_SEEN}",
                    "x speed", 1))
    ours = f"start/vantrel/{programs.DIFF_SEEN}"
    for peer, words in (("meld", "meld, given both files"), ("kdiff3", "kdiff3, given both files"),
                        ("git-cola", "git-cola, by the same click")):
        rows.append(Row("start, click, to a diff of 20 lines", words,
                        f"start/{peer}/{programs.DIFF_SEEN}", ours, "x speed", 1))
    return rows


def large_rows() -> list[Row]:
    """A file of 100,000 changed lines."""
    ours = "large/vantrel"
    rows = []
    for peer in ("meld", "kdiff3"):
        shown = f"large/{peer}/{programs.DIFF_SEEN}"
        rows.append(Row("click to 100,000 lines; peers: start", peer, shown,
                        f"{ours}/click to rows", "x speed", 10))
        rows.append(Row("start to 100,000 changed lines", peer, shown,
                        f"{ours}/{programs.DIFF_SEEN}", "x speed"))
    rows.append(Row("memory with 100,000 lines open", "itself, whole process at most",
                    f"{ours}/peak megabytes", "", "MB", 150, more_is_better=False))
    for peer in ("meld", "kdiff3"):
        rows.append(Row("memory with 100,000 lines open", peer, f"large/{peer}/peak megabytes",
                        f"{ours}/peak megabytes", "x less"))
    return rows


def frame_rows() -> list[Row]:
    """Frames of the diff screen; processor time of the interface thread."""
    rows = []
    for figure, workload, median_goal in (
        ("scroll", "a page of 100,000 lines", 8),
        ("scroll small hunks", "a page of 50,000 small hunks", 8),
        ("burst of an explanation", "10,000 chunks while scrolling", None),
        ("burst of an answer", "10,000 chunks of an answer, too", None),
    ):
        for of, words, goal in (("median", "itself, the frame in the middle", median_goal),
                                ("slowest", "itself, the slowest frame", 16),
                                ("slowestBusy", "itself, as time that passed", None)):
            rows.append(Row(workload, words, f"{figure}/{of}", "", "ms", goal,
                            more_is_better=False))
    rows.append(Row("a streamed delta, 100,000 rows", "the same, 10 rows", "delta/100000 rows",
                    "delta/10 rows", "x time", 1.1, more_is_better=False))
    return rows


def own_figures(program: pathlib.Path) -> Round:
    """The figures of a Google Benchmark program: seconds by name, its counters behind a slash."""
    run = subprocess.run(
        [program, "--benchmark_format=json", "--benchmark_min_time=0.2"],
        check=True, stdout=subprocess.PIPE,
    )
    figures = {}
    for row in json.loads(run.stdout)["benchmarks"]:
        name = row["name"]
        if row.get("error_occurred"):
            raise SystemExit(f"{name}: {row['error_message']}")
        figures[name] = row["real_time"] * UNITS[row["time_unit"]]
        for counter in ("recordBytesPerLine", "ratio_to_bare", "processor_ratio_to_bare"):
            if counter in row:
                figures[f"{name}/{counter}"] = row[counter]
        if name.startswith("BM_ParseExplanation"):
            figures[f"{name}/millions"] = row["items_per_second"] / 1e6
    return figures


def peer_figures(command: list[str]) -> Round:
    """The figures of a peer, which prints one JSON object a line."""
    run = subprocess.run(command, check=True, stdout=subprocess.PIPE)
    rows = [json.loads(line) for line in run.stdout.splitlines()]
    return {f"{row['workload']}/{row['peer']}": row["seconds"] for row in rows}


def frame_figures(program: pathlib.Path) -> Round:
    """The figures of a program that prints one JSON object for each."""
    run = subprocess.run([program], check=True, stdout=subprocess.PIPE)
    rows = [json.loads(line) for line in run.stdout.splitlines()]
    return {row["figure"]: row["value"] for row in rows}


def measure(benchmarks: pathlib.Path, inputs: pathlib.Path) -> Round:
    diffs = [str(inputs / f"{shape}.diff") for shape in DIFFS]
    figures = {}
    for name in ("models", "ai", "panes", "markdown", "listing"):
        figures |= own_figures(benchmarks / f"vantrel_{name}_benchmark")
        if name == "models":
            figures |= peer_figures(["node", str(PEERS / "parse_diff.mjs"), *diffs])
            figures |= peer_figures(["/usr/bin/python3", str(PEERS / "parse_diff.py"), *diffs])
        if name == "ai":
            stream = str(inputs / "eventStream.sse")
            figures |= peer_figures(["node", str(PEERS / "decode_stream.mjs"), stream])
    return figures | frame_figures(benchmarks / "vantrel_screen_benchmark")


def main() -> None:
    build, results = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    count = int(sys.argv[3])
    benchmarks, vantrel = build / "benchmarks", build / "src" / "vantrel"
    inputs = results / "inputs"
    inputs.mkdir(parents=True, exist_ok=True)
    subprocess.run([benchmarks / "write_benchmark_inputs", inputs], check=True)
    small = programs.make_change(inputs / "small", programs.SMALL_CHANGE)
    large = programs.make_change(inputs / "large", programs.LARGE_CHANGE)

    rounds: list[Round] = []
    with programs.virtual_screen(results / "screen") as screen:
        watcher = programs.Watcher(benchmarks / "watch_program", screen, results / "home",
                                   small.repository)
        for number in range(1, count + 1):
            print(f"round {number} of {count}", file=sys.stderr, flush=True)
            rounds.append(
                measure(benchmarks, inputs)
                | programs.start_figures(watcher, vantrel, small)
                | programs.large_figures(watcher, vantrel, large, has_peers=number == 1))

    rows = []
    line = "{:<36} {:<32} {:>8} {:>8} {:>8}  {:<11} {}"
    print(line.format("workload", "compared with", "median", "lowest", "highest", "", "goal"))
    for row in table():
        values = row.values(rounds)
        median = statistics.median(values)
        figures = [f"{value:.2f}" for value in (median, min(values), max(values))]
        verdict = row.verdict(median)
        compared_with = row.compared_with + row.remark(rounds)
        print(line.format(row.workload, compared_with, *figures, row.unit, verdict).rstrip())
        rows.append(dataclasses.asdict(row) | {
            "compared_with": compared_with, "median": median, "lowest": min(values), "highest": max(values), "verdict": verdict,
        })
    report = {"rounds": count, "rows": rows, "samples": rounds}
    (results / "results.json").write_text(json.dumps(report, indent=1) + "\n")


main()
