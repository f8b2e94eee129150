"""What the shells complete, each asked as a person does: by a key, at its prompt.

completions_test.py CMAKE BUILD
"""
import os
import pathlib
import pty
import subprocess
import sys
import tempfile
import unittest

from installation import installed, options_in

CMAKE, BUILD = sys.argv[1:]

# Each tells by a prompt of its own when it takes keys, and Ctrl+G keeps the line and ends the shell.
BASH = r"""
PS1='ready>'; HISTFILE=
source "$COMPLETIONS"
keep() { printf %s "$READLINE_LINE" >"$KEPT"; exit; }
bind -x '"\C-g": keep'
bind 'set completion-query-items 0' 'set page-completions off' 'set enable-bracketed-paste off'
"""
ZSH = r"""
PS1='ready>'
fpath=("${COMPLETIONS:h}" $fpath)
autoload -Uz compinit && compinit -u -D
keep() { print -rn -- "$BUFFER" >"$KEPT"; exit }
zle -N keep && bindkey '^G' keep && bindkey '^I' complete-word
"""


class Shells(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder, cls.prefix = installed(CMAKE, BUILD)
        cls.addClassCleanup(folder.cleanup)
        help_text = subprocess.check_output([cls.prefix / "bin/vantrel", "--help"], text=True)
        cls.options = options_in(help_text)

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.place = self.folder / "place"
        (self.place / "repository").mkdir(parents=True)
        (self.place / "report").touch()

    def line_after(self, keys, completions, start_file, start, *command):
        """The line that a shell shows after the keys."""
        (self.folder / start_file).write_text(start)
        kept = self.folder / "kept"
        child, terminal = pty.fork()
        if child == 0:
            os.chdir(self.place)
            os.execvpe(command[0], command, os.environ | {
                "COMPLETIONS": str(self.prefix / "share" / completions), "KEPT": str(kept),
                "HOME": str(self.folder), "ZDOTDIR": str(self.folder), "TERM": "xterm"})
        seen = b""
        while b"ready>" not in seen:
            seen += os.read(terminal, 4096)
        os.write(terminal, keys.encode() + b"\x07")
        try:
            while os.read(terminal, 4096):
                pass
        except OSError:
            pass  # So ends what the terminal of an ended program says.
        os.close(terminal)
        os.waitpid(child, 0)
        return kept.read_text()

    def in_bash(self, keys):
        start = self.folder / "bashrc"
        return self.line_after(keys, "bash-completion/completions/vantrel", start.name, BASH,
                               "bash", "--rcfile", str(start), "-i")

    def in_zsh(self, keys):
        return self.line_after(keys, "zsh/vendor-completions/_vantrel", ".zshrc", ZSH,
                               "zsh", "--no-globalrcs", "-i")

    def in_fish(self, line):
        """fish lists what it would offer, without a prompt."""
        completions = self.prefix / "share/fish/vendor_completions.d/vantrel.fish"
        offered = subprocess.run(
            ["fish", "--no-config", "-c", 'source $argv[1]; complete --do-complete $argv[2]',
             completions, line],
            cwd=self.place, capture_output=True, text=True, check=True)
        self.assertEqual(offered.stderr, "")
        return {entry.split("\t")[0] for entry in offered.stdout.splitlines()}

    def test_bash_completes_every_option(self):
        for option in self.options:
            with self.subTest(option=option):
                self.assertEqual(self.in_bash(f"vantrel {option[:3]}\t"), f"vantrel {option} ")

    def test_zsh_completes_every_option(self):
        for option in self.options:
            with self.subTest(option=option):
                self.assertEqual(self.in_zsh(f"vantrel {option[:3]}\t"), f"vantrel {option} ")

    def test_fish_offers_every_option(self):
        self.assertEqual(self.in_fish("vantrel --"), self.options)

    def test_bash_completes_folders_and_no_files(self):
        self.assertEqual(self.in_bash("vantrel re\t"), "vantrel repository/")

    def test_zsh_completes_folders_and_no_files(self):
        self.assertEqual(self.in_zsh("vantrel re\t"), "vantrel repository/")

    def test_fish_offers_folders_and_no_files(self):
        self.assertEqual(self.in_fish("vantrel re"), {"repository/"})

    def test_no_shell_offers_a_second_folder(self):
        self.assertEqual(self.in_bash("vantrel . re\t"), "vantrel . re")
        self.assertEqual(self.in_zsh("vantrel . re\t"), "vantrel . re")
        self.assertEqual(self.in_fish("vantrel . re"), set())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
