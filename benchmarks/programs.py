"""The application beside other programs that show changes, each watched from outside.

Every program runs on the same virtual screen, with a home folder of its own that is empty but for
what it needs, and without a session bus. What is to be seen carries signs, blocks apart by spaces,
that `watch_program` finds on the screen whoever draws them: five in the name of the folder, six in
the name of the file, seven in the old lines, nine in the new ones. A list or a diff is there when
its signs are.
"""

from __future__ import annotations

import contextlib
import dataclasses
import json
import os
import pathlib
import shutil
import socket
import subprocess
from collections.abc import Iterator

SMALL_CHANGE = 10  # Lines replaced: ten old ones and ten new ones.
LARGE_CHANGE = 100_000
LINES_OF_HUNK = 50

FOLDER_SIGN = "█ █ █ █ █"
FILE_SIGN = "█ █ █ █ █ █"
OLD_SIGN = "█ " * 7
NEW_SIGN = "█ " * 9
FOLDER_SEEN = "see:5"
FILE_SEEN = "see:6"
FILE_CLICKED = "click:6"
DIFF_SEEN = "see:7+9"

LIMIT_SECONDS = 60  # Whoever has shown nothing by then is stopped.


@dataclasses.dataclass(frozen=True)
class Screen:
    """A virtual screen, and the file that holds what it shows."""

    display: str
    framebuffer: pathlib.Path


@contextlib.contextmanager
def virtual_screen(folder: pathlib.Path) -> Iterator[Screen]:
    """A white screen without a pointer's picture, on which only the programs draw."""
    folder.mkdir(parents=True, exist_ok=True)
    reading, writing = os.pipe()
    command = ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x824x24", "-wr", "-nocursor",
               "-nolisten", "tcp", "-fbdir", str(folder)]
    with subprocess.Popen(command, pass_fds=[writing], stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL) as server:
        os.close(writing)
        with os.fdopen(reading) as number:
            display = number.readline().strip()
        if not display:
            raise SystemExit("the virtual screen did not start")
        try:
            yield Screen(f":{display}", folder / "Xvfb_screen0")
        finally:
            server.terminate()


def source_text(replaced: int, word: str, sign: str) -> str:
    """A file in which `replaced` lines carry the word, in pieces of at most fifty.

    Lines are as long as those of most sources, 36 characters on average, and each is the only one of
    its kind.
    """
    forms = (
        "    const auto {word}{number} = compute({number});",
        "    if ({word}{number} == nullptr) {{",
        "        return failure({word}{number}); // Nobody asked for it.",
        "    }} // {word}{number}",
        "    m_{word}.insert({number}, other->field);",
    )
    lines = [f"// Line {number} before the first change." for number in range(3)]
    for number in range(replaced):
        if number > 0 and number % LINES_OF_HUNK == 0:
            lines += [f"// Line {line} before change {number}." for line in range(10)]
        start = sign if number < 2 else ""
        lines.append(start + forms[number % len(forms)].format(word=word, number=number))
    return "\n".join(lines) + "\n"


@dataclasses.dataclass(frozen=True)
class Change:
    """One change, as a pair of files and as a repository of one modified file."""

    old: pathlib.Path
    new: pathlib.Path
    repository: pathlib.Path


def make_change(folder: pathlib.Path, replaced: int) -> Change:
    shutil.rmtree(folder, ignore_errors=True)
    change = Change(folder / "old.cpp", folder / "new.cpp", folder / FOLDER_SIGN)
    change.repository.mkdir(parents=True)
    change.old.write_text(source_text(replaced, "value", OLD_SIGN))
    change.new.write_text(source_text(replaced, "result", NEW_SIGN))
    git = ["git", "-C", change.repository, "-c", "user.name=Bench",
           "-c", "user.email=bench@example.org", "-c", "commit.gpgSign=false"]
    file = change.repository / f"{FILE_SIGN}.cpp"
    shutil.copy(change.old, file)
    for command in (["init", "--quiet"], ["add", "."], ["commit", "--quiet", "--message", "Before"]):
        subprocess.run([*git, *command], check=True)
    shutil.copy(change.new, file)
    return change


def write_preferences(home: pathlib.Path, provider: socket.socket, recent: pathlib.Path) -> None:
    """What the application finds: a provider and one recent repository."""
    folder = home / ".config" / "com.orbisk.app"
    folder.mkdir(parents=True)
    record = {"id": "5D9C1F6E-7B0A-4C3E-9B55-0E6A3F6C1D11", "name": recent.name,
              "path": str(recent), "lastOpened": 750_000_000}
    preferences = {
        "aiProvider": "text\ncustom",
        "aiBaseURL": f"text\nhttp://127.0.0.1:{provider.getsockname()[1]}/v1",
        "aiModel": "text\nnone",
        "keychainAccessNotice.hasAcknowledged": "boolean\ntrue",
        "recentRepos": "data\n" + json.dumps([record]),
    }
    for key, value in preferences.items():
        (folder / key).write_text(value)


class Watcher:
    """Runs programs one after another on the screen and tells how long each took to show what."""

    def __init__(self, program: pathlib.Path, screen: Screen, home: pathlib.Path,
                 recent: pathlib.Path) -> None:
        # Connections are made, and nothing is ever answered: a model takes longer than all this.
        self.provider = socket.create_server(("127.0.0.1", 0), backlog=1024)
        self.program = program
        self.screen = screen
        self.home = home
        self.recent = recent

    def watch(self, name: str, steps: list[str], command: list[object]) -> dict[str, float]:
        """Seconds by `name/step`; of a program that was stopped, the limit."""
        shutil.rmtree(self.home, ignore_errors=True)
        run_folder = self.home / "run"
        run_folder.mkdir(parents=True, mode=0o700)
        write_preferences(self.home, self.provider, self.recent)
        environment = {
            "PATH": "/usr/bin:/bin", "HOME": str(self.home), "XDG_RUNTIME_DIR": str(run_folder),
            "DISPLAY": self.screen.display, "LC_ALL": "C.UTF-8",
            "DBUS_SESSION_BUS_ADDRESS": "disabled:", "QT_QUICK_BACKEND": "software",
        }
        run = subprocess.run(
            [self.program, self.screen.framebuffer, str(LIMIT_SECONDS), *steps, "--", *command],
            env=environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
        )
        if run.returncode != 0:
            raise SystemExit(f"{name}: {run.stderr.decode(errors='replace').splitlines()[-1]}")
        result = json.loads(run.stdout)
        figures = {f"{name}/peak megabytes": result["peakKibibytes"] * 1024 / 1e6}
        for step, seconds in result["steps"].items():
            figures[f"{name}/{step}"] = LIMIT_SECONDS if seconds is None else seconds
            if seconds is None:
                figures[f"{name}/{step}/stopped"] = 1
        return figures


def start_figures(watcher: Watcher, vantrel: pathlib.Path, change: Change) -> dict[str, float]:
    """From a program's start to what it shows of a small change."""
    listed = [FILE_SEEN, FILE_CLICKED, DIFF_SEEN]
    figures = watcher.watch("start/picker", ["painted", FOLDER_SEEN], [vantrel])
    figures |= watcher.watch("start/vantrel", ["painted", *listed], [vantrel, change.repository])
    figures |= watcher.watch("start/git-cola", ["painted", *listed],
                             ["git-cola", "--repo", change.repository])
    for peer in ("meld", "kdiff3"):
        figures |= watcher.watch(f"start/{peer}", ["painted", DIFF_SEEN],
                                 [peer, change.old, change.new])
    return figures


def large_figures(watcher: Watcher, vantrel: pathlib.Path, change: Change,
                  has_peers: bool) -> dict[str, float]:
    """The same of a large change. The peers take minutes, so not every round has them."""
    # Memory is read at the end, so that what goes on behind the rows counts too.
    figures = watcher.watch("large/vantrel", [FILE_SEEN, FILE_CLICKED, DIFF_SEEN, "rest:2"],
                            [vantrel, change.repository])
    figures["large/vantrel/click to rows"] = (
        figures[f"large/vantrel/{DIFF_SEEN}"] - figures[f"large/vantrel/{FILE_CLICKED}"])
    if has_peers:
        for peer in ("meld", "kdiff3"):
            figures |= watcher.watch(f"large/{peer}", [DIFF_SEEN], [peer, change.old, change.new])
    return figures
