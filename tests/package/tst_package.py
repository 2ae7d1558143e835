#!/usr/bin/env -S python3 -B
"""Packs the build folder given as first argument, unpacks the archive, checks its content, and runs
the programs and the tour in it. The second argument is the version."""

import os
import pathlib
import platform
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

BUILD = pathlib.Path(sys.argv.pop(1))
VERSION = sys.argv.pop(1)
NAME = f"quirel-{VERSION}-Linux-{platform.machine()}"
METAINFO = "share/metainfo/example.kovant.quirel.metainfo.xml"
PROGRAMS = ["quirel", "quirel-simulator"]
CONTENTS = {*PROGRAMS, "translations", "img", "remote", "docs", "share", "install-desktop-entry",
            "README.md", "INSTALL.md", "CHANGELOG.md", "CONTRIBUTING.md"}
TEXTS = {"quirel_zh_CN.qm", "qtbase_zh_CN.qm"}
# File names are read as UTF-8 in any locale of the machine.
ENVIRONMENT = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8"}


def output_of(*command, **options):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          env=ENVIRONMENT, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command} ends with {done.returncode}:\n{done.stdout}")
    return done.stdout


def names_in(folder):
    return {path.name for path in folder.iterdir()}


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        place = tempfile.TemporaryDirectory()
        cls.addClassCleanup(place.cleanup)
        cls.place = pathlib.Path(os.path.realpath(place.name))
        output_of("cpack", "--config", BUILD / "CPackConfig.cmake", "-B", cls.place / "made")
        unpacked = cls.place / "Gerät 掌"
        shutil.unpack_archive(cls.place / "made" / f"{NAME}.tar.gz", unpacked)
        cls.folder = unpacked / NAME

    def test_contents(self):
        self.assertEqual(names_in(self.folder.parent), {NAME})
        self.assertEqual(names_in(self.folder), CONTENTS)
        self.assertEqual(names_in(self.folder / "translations"), TEXTS)
        self.assertIn("protocol.md", names_in(self.folder / "docs"))

    def test_pages_link_to_what_is_there(self):
        for page in self.folder.rglob("*.md"):
            text = re.sub(r"(?s)(```|`).*?\1", "", page.read_text(encoding="utf-8"))
            for link in re.findall(r"\]\(([^)#\s]+)", text):
                if not re.match("[a-z]+:", link):
                    self.assertTrue((page.parent / link).exists(), f"{page.name} links to {link}")

    def test_programs_are_stripped_and_find_no_library_by_its_place(self):
        for program in PROGRAMS:
            output = output_of("readelf", "--wide", "--sections", "--dynamic", self.folder / program)
            self.assertIn("(NEEDED)", output)
            self.assertNotRegex(output, r"\(RPATH\)|\(RUNPATH\)|\.symtab|\.debug_")

    def test_versions_agree(self):
        output = output_of(self.folder / "quirel-simulator", "--version")
        self.assertEqual(output, f"quirel-simulator {VERSION}\n")
        releases = re.findall(r'<release version="(.+?)" date="(.+?)"',
                              (self.folder / METAINFO).read_text(encoding="utf-8"))
        changes = re.findall(r"(?m)^## \[(\d.*?)\] - (.+)$",
                             (self.folder / "CHANGELOG.md").read_text(encoding="utf-8"))
        self.assertEqual(releases, changes)
        self.assertEqual(releases[0][0], VERSION)

    def test_console_starts_and_stays(self):
        texts = str(self.folder / "translations/quirel_zh_CN.qm")
        process = subprocess.Popen([self.folder / "quirel"], cwd="/",
                                   env={**ENVIRONMENT, "LANGUAGE": "zh_CN"})
        try:
            maps = pathlib.Path(f"/proc/{process.pid}/maps")
            deadline = time.monotonic() + 20
            while texts not in maps.read_text() and process.poll() is None:
                self.assertLess(time.monotonic(), deadline, "the console has not loaded its texts")
                time.sleep(0.05)
            with self.assertRaises(subprocess.TimeoutExpired, msg="the console has ended"):
                process.wait(2)
            self.assertNotIn(str(BUILD), maps.read_text())
            process.terminate()
            self.assertEqual(process.wait(10), -signal.SIGTERM)
        finally:
            process.kill()
            process.wait()

    def test_tour_of_the_unpacked_folder(self):
        for name in ("img", "remote"):
            self.assertEqual(names_in(self.folder / name), set())
        tour = self.folder / "tour"
        shutil.copy(BUILD / "bin/tour", tour)
        self.addCleanup(tour.unlink)
        print(output_of(tour, "--output", self.place / "pictures", timeout=120))
        self.assertIn("remote_feat.bin", names_in(self.folder / "remote"))


if __name__ == "__main__":
    unittest.main()
