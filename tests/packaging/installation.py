"""What the tests of the installation share."""
import pathlib
import subprocess
import tempfile


def installed(cmake, build):
    """A temporary folder, and the prefix in it below which the built project is installed."""
    folder = tempfile.TemporaryDirectory()
    prefix = pathlib.Path(folder.name, "usr")
    subprocess.run([cmake, "--install", build, "--prefix", prefix], check=True,
                   stdout=subprocess.DEVNULL)
    return folder, prefix


def options_in(text):
    """The long options that a text names."""
    words = text.replace(",", " ").replace("|", " ").split()
    return {word for word in words if word.startswith("--") and len(word) > 2}
