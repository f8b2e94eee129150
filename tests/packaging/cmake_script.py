"""Calls of the project's CMake functions, outside of a build."""
import os
import pathlib
import subprocess
import tempfile


def run_script(cmake, script, **variables):
    """Runs a script of CMake, which finds the variables in its environment, whatever is in them."""
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder, "script.cmake")
        file.write_text(script)
        return subprocess.run([cmake, "-P", file], capture_output=True, text=True,
                              env=os.environ | variables)


def written_by(cmake, script, **variables):
    """The bytes of the file $ENV{FILE} that a script writes."""
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder, "share", "written")
        run_script(cmake, script, FILE=str(file), **variables).check_returncode()
        return file.read_bytes()
