"""Finds the fenmark program and runs it."""
import os
import pathlib
import shutil
import subprocess

NAME = "fenmark.exe" if os.name == "nt" else "fenmark"


class FenmarkError(Exception):
    """What the program said when it could not do something."""


def find_program():
    """The program named by FENMARK_PROGRAM, beside the plugin, or on the path; None if there is none."""
    named = os.environ.get("FENMARK_PROGRAM")
    if named:
        return named
    beside = pathlib.Path(__file__).with_name(NAME)
    return str(beside) if beside.is_file() else shutil.which(NAME)


def run(arguments, feedback=None):
    """Runs fenmark with the arguments and gives what it printed. Its notes go to the feedback; raises FenmarkError."""
    program = find_program()
    if program is None:
        raise FenmarkError("fenmark is neither on the path, beside the plugin, nor named by FENMARK_PROGRAM")
    ran = subprocess.run([program, *arguments], capture_output=True, check=False)
    notes = ran.stderr.decode("utf-8", "replace").strip()
    if ran.returncode != 0:
        raise FenmarkError(notes or f"fenmark ended with {ran.returncode}")
    if feedback is not None and notes:
        feedback.pushInfo(notes)
    return ran.stdout.decode("utf-8", "replace")
