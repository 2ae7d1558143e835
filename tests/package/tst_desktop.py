#!/usr/bin/env -S python3 -B
"""Installs from the build folder given as argument, validates the desktop files, and adds the console
to a menu and removes it, from folders with all kinds of names."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

BUILD = sys.argv.pop(1)
ID = "example.kovant.quirel"
ENTRY = f"applications/{ID}.desktop"
FOLDERS = ["plain", "two  words", "Gerät 掌", "it's (a); #&*?<>|~", "100% %f %%u",
           'all "of" `the` $RESERVED \\s\\\\']
REFUSED = ["a=b", "two\nlines", "tab\t", "latin-1 \udce9"]
ESCAPES = {"s": " ", "n": "\n", "t": "\t", "r": "\r", "\\": "\\"}


def output_of(*command):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return done.returncode, done.stdout


def text_of(entry, key):
    """Returns a key's value as a desktop reads it; an unknown escape is an error."""
    value, = re.findall(f"^{key}=(.*)$", entry.read_text(encoding="utf-8"), re.MULTILINE)
    return re.sub(r"\\(.?)", lambda match: ESCAPES[match[1]], value)


def program_of(entry):
    """Returns the program of an Exec key: one quoted word, perhaps behind `env`."""
    word = re.fullmatch(r'(?:env )?"((?:[^"`$\\]|\\["`$\\])*)"', text_of(entry, "Exec"))[1]
    return re.sub("%(.?)", lambda match: {"%": "%"}[match[1]], re.sub(r"\\(.)", r"\1", word))


class Desktop(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.place = pathlib.Path(os.path.realpath(place.name))
        self.folder = self.place / "installed"
        code, output = output_of("cmake", "--install", BUILD, "--prefix", self.folder)
        self.assertEqual(code, 0, output)

    def put(self, name, *arguments, **environment):
        """Renames the installed folder and runs its script."""
        self.folder = self.folder.rename(self.place / name)
        environment = {"PATH": os.environ["PATH"], "HOME": str(self.place / "home"), **environment}
        return subprocess.run([self.folder / "install-desktop-entry", *arguments], env=environment,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, cwd="/")

    def judge(self, entry):
        self.assertEqual(output_of("desktop-file-validate", entry), (0, ""))

    def test_installed_files_are_valid(self):
        self.judge(self.folder / "share" / ENTRY)
        code, output = output_of("appstreamcli", "validate", "--no-net",
                                 self.folder / f"share/metainfo/{ID}.metainfo.xml")
        self.assertEqual(code, 0, output)

    def test_entry_starts_the_program_in_any_folder(self):
        data = self.place / "home/.local/share"
        for name in FOLDERS:
            with self.subTest(name):
                self.assertEqual(self.put(name).returncode, 0)
                self.judge(data / ENTRY)
                self.assertEqual(program_of(data / ENTRY), str(self.folder / "quirel"))
                self.assertEqual(text_of(data / ENTRY, "TryExec"), str(self.folder / "quirel"))

    def test_path_that_no_entry_can_hold_is_refused(self):
        for name in REFUSED:
            with self.subTest(ascii(name)):
                done = self.put(name)
                self.assertEqual((done.returncode, done.stdout), (1, b""))
                self.assertRegex(done.stderr, b"^install-desktop-entry: ")
        self.assertFalse((self.place / "home").exists())

    def test_what_is_added_is_removed(self):
        data = self.place / "data é"
        other = data / "applications/other.desktop"
        other.parent.mkdir(parents=True)
        other.touch()
        self.assertEqual(self.put("here", XDG_DATA_HOME=str(data)).returncode, 0)
        icon = text_of(data / ENTRY, "Icon")
        sizes = {path.parent.parent.name for path in data.glob(f"icons/hicolor/*/apps/{icon}.*")}
        self.assertEqual(len(sizes), 8, sizes)
        self.assertEqual(self.put("there", "--remove", XDG_DATA_HOME=str(data)).returncode, 0)
        self.assertEqual([path for path in data.rglob("*") if path != other.parent], [other])


if __name__ == "__main__":
    missing = [tool for tool in ("desktop-file-validate", "appstreamcli") if not shutil.which(tool)]
    if missing:
        print("Skipped: not installed:", *missing)
        sys.exit(77)
    unittest.main()
