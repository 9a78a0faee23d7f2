#!/usr/bin/env python3
"""Does what the manual's example of a new model says, and compares what the commands print with the page.

  manual_example.py VORLANTCTL VORLANT_SIM PAGE   exits with 1 and tells the difference when there is one
"""

import difflib
import html
import os
import re
import shlex
import subprocess
import sys
import tempfile
from pathlib import Path

LINK = "/tmp/kx490"  # of the page
SECONDS = 60


def parts(page, kind):
    """The texts of the <pre> elements of a class, with their titles."""
    found = re.findall(rf'<pre class="{kind}"(?: title="([^"]*)")?>(.*?)</pre>', page, re.DOTALL)
    return [(title, html.unescape(text)) for title, text in found]


def add_to_catalogue(settings, lines):
    text = settings.read_text()
    for line in lines:
        key = line.split("=")[0]
        text, changed = re.subn(rf"(?m)^{key}=.*$", line, text)
        text = text if changed else text.replace("[KXInfos]\n", f"[KXInfos]\n{line}\n")
    settings.write_text(text)


def prompted(command, ctl, link, environment):
    words = shlex.split(command.replace(LINK, shlex.quote(str(link))))
    run = subprocess.run([ctl, *words[1:]], env=environment, timeout=SECONDS, text=True, stdout=subprocess.PIPE,
                         stderr=subprocess.STDOUT)
    return [f"$ {command}", *run.stdout.splitlines()]


def session(ctl, sim, page, folder):
    definitions, config = folder / "program" / "ini", folder / "config"
    definitions.mkdir(parents=True)
    config.mkdir()
    environment = os.environ | {"VORLANT_PROGRAM_DIR": str(folder / "program"), "XDG_CONFIG_HOME": str(config),
                                "XDG_STATE_HOME": str(folder / "state")}
    for name, text in parts(page, "file"):
        (definitions / name).write_text(text)
    subprocess.run([ctl, "models"], env=environment, timeout=SECONDS, check=True, stdout=subprocess.DEVNULL)
    ((_, lines),) = parts(page, "catalogue")
    add_to_catalogue(config / "Vorlan" / "Vorlant.ini", lines.split())
    ((_, shown),) = parts(page, "session")
    link = folder / "line"
    with subprocess.Popen([sim, "--model", "KX490", "--link", link], env=environment, stdout=subprocess.PIPE) as player:
        try:
            player.stdout.readline()  # it is ready
            commands = [line[2:] for line in shown.splitlines() if line.startswith("$ ")]
            printed = [line for command in commands for line in prompted(command, ctl, link, environment)]
        finally:
            player.terminate()
    faults = folder / "program" / "Log" / "VorlantErr.log"
    noted = [f"in the error log: {line}" for line in faults.read_text("cp932").splitlines()] if faults.exists() else []
    return shown.splitlines(), printed + noted


def main():
    ctl, sim, file = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        shown, printed = session(ctl, sim, Path(file).read_text(encoding="utf-8"), Path(folder))
    print(*difflib.unified_diff(shown, printed, "page", "programs", lineterm=""), sep="\n")
    return 0 if shown and shown == printed else 1


if __name__ == "__main__":
    sys.exit(main())
