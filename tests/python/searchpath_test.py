"""The module by itself: what goes in, what comes out, what is refused."""

import ctypes.util
import os
import pathlib
import select
import subprocess
import sys
import tempfile
import threading
import time
import unittest
import unittest.mock

import searchpath

BAD = os.fsdecode(b"\xff.zt")  # a name that is not UTF-8


class TreeTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = os.path.realpath(folder.name)
        self.make("a/" + BAD, "b/" + BAD, "b/Other.zt", "b/private/own.zt", "b/deep/below.zt")
        self.environment = searchpath.Environment([self.at("a"), self.at("b")])

    def at(self, name):
        return os.path.join(self.root, name)

    def make(self, *names):
        for name in names:
            os.makedirs(os.path.dirname(self.at(name)), exist_ok=True)
            open(self.at(name), "w").close()


class EnvironmentTest(TreeTest):
    def test_texts_are_str_bytes_or_paths(self):
        bad = self.at("a/" + BAD)
        for folder in (self.at("a"), os.fsencode(self.at("a")), pathlib.Path(self.at("a"))):
            for name in (BAD, os.fsencode(BAD), pathlib.PurePath(BAD)):
                with self.subTest(folder=folder, name=name):
                    self.assertEqual(searchpath.Environment([folder]).find(name), bad)

    def test_questions(self):
        find = self.environment.find
        self.assertEqual(find("Other.zt"), self.at("b/Other.zt"))
        self.assertIsNone(find("other.zt"))
        self.assertEqual(find("other.zt", ignore_case=True), self.at("b/Other.zt"))
        for extensions in (["c", "zt"], (".zt",), iter(["zt"])):
            self.assertEqual(find("Other", extensions=extensions), self.at("b/Other.zt"))
        self.assertEqual(find("own.zt", from_folder=self.at("b")), self.at("b/private/own.zt"))
        self.assertEqual(
            self.environment.find_all(BAD), [self.at("a/" + BAD), self.at("b/" + BAD)]
        )
        self.assertEqual(self.environment.find_all("none"), [])

    def test_paths_of_other_kinds(self):
        below = self.at("b/deep/below.zt")
        everywhere = searchpath.Environment([self.at("b")], recursive=True)
        self.assertEqual(everywhere.find("below.zt"), below)
        plain = searchpath.Environment([self.at("b")], rules="plain")
        self.assertEqual(plain.find("deep/below.zt"), below)
        self.assertIsNone(searchpath.Environment([self.at("gone")]).find("below.zt"))

    def test_explanations_hold_names_as_they_are(self):
        explained = self.environment.explain(BAD)
        self.assertEqual(explained["name"], BAD)
        self.assertEqual(explained["path"], self.at("a/" + BAD))
        self.assertEqual(explained["rule"], "first-folder")
        outcomes = [(asked["folder"], asked["outcome"]) for asked in explained["asked"]]
        self.assertEqual(
            outcomes, [(self.at("a"), "holds-it"), (self.at("b"), "hidden-by-earlier")]
        )
        self.assertEqual(explained["asked"][1]["files"], [{"path": self.at("b/" + BAD)}])
        self.assertIsNone(self.environment.explain("none")["path"])

    def test_shadows(self):
        os.link(self.at("b/Other.zt"), self.at("a/Other.zt"))
        self.assertEqual(
            searchpath.Environment([self.at("b"), self.at("a")]).shadows(extensions=["zt"]),
            [
                {
                    "name": name,
                    "path": self.at("b/" + name + ".zt"),
                    "hidden": [{"path": self.at("a/" + name + ".zt"), "kind": kind}],
                }
                for name, kind in (("Other", "same-file"), (BAD[:-3], "identical"))
            ],
        )

    def test_wrong_arguments(self):
        find = self.environment.find
        receipt = self.environment.find_with_receipt
        for wrong, call in (
            (TypeError, lambda: find(None)),
            (TypeError, lambda: find(1)),
            (TypeError, lambda: find("x", extensions="zt")),
            (TypeError, lambda: find("x", extensions=[1])),
            (TypeError, lambda: find("x", from_folder=1)),
            (TypeError, lambda: receipt("x")),
            (TypeError, lambda: self.environment.shadows(extensions=b"zt")),
            (TypeError, lambda: searchpath.Environment(self.at("a"))),
            (TypeError, lambda: searchpath.Environment(pathlib.Path(self.at("a")))),
            (TypeError, lambda: searchpath.Environment(None)),
            (TypeError, lambda: searchpath.Environment([], rules=None)),
            (TypeError, lambda: searchpath.Receipt.load(None)),
            (ValueError, lambda: searchpath.Environment([], rules="martian")),
            (ValueError, lambda: searchpath.Environment(["a\0b"])),
            (ValueError, lambda: find("Other.zt\0")),
            (ValueError, lambda: find("\ud800")),
        ):
            with self.assertRaises(wrong):
                call()
        with self.assertRaisesRegex(OSError, "gone': no such folder"):
            find("x", from_folder=self.at("gone"))
        self.assertEqual(find("Other.zt"), self.at("b/Other.zt"))

    def test_what_is_relative_stays_where_it_was(self):
        before = os.getcwd()
        self.addCleanup(os.chdir, before)
        os.chdir(self.root)
        environment = searchpath.Environment(["b"])
        os.chdir("a")
        with environment.watch() as watch:
            self.make("b/new.zt")
            self.assertEqual(watch.environment().find("new.zt"), self.at("b/new.zt"))
        self.assertEqual(environment.find("own.zt", from_folder="b"), self.at("b/private/own.zt"))

    def test_threads_share_an_environment(self):
        names = {"Other.zt": self.at("b/Other.zt"), "none": None, BAD: self.at("a/" + BAD)}
        wrong = []

        def ask():
            for _ in range(200):
                wrong.extend(n for n, path in names.items() if self.environment.find(n) != path)
                wrong.extend(n for n in names if self.environment.explain(n)["name"] != n)

        threads = [threading.Thread(target=ask) for _ in range(8)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(wrong, [])


class WatchTest(TreeTest):
    def assert_rests(self, watch):
        # Other tests change the folder that holds the tree, which wakes as well.
        end = time.monotonic() + 60
        while watch.wait(0.1):
            watch.environment()
            self.assertLess(time.monotonic(), end, "the watch wakes all the time")

    def test_wakes_and_has_the_path_as_it_is(self):
        with self.environment.watch() as watch:
            self.assert_rests(watch)
            self.make("b/new.zt")
            self.assertTrue(watch.wait(60))
            self.assertEqual(select.select([watch], [], [], 60)[0], [watch])
            self.assertEqual(watch.environment().find("new.zt"), self.at("b/new.zt"))
            self.assert_rests(watch)
        for call in (watch.environment, watch.fileno, watch.wait, watch.__enter__):
            with self.assertRaisesRegex(ValueError, "closed"):
                call()

    def test_waits_as_many_seconds_as_it_is_told(self):
        never, end = os.pipe()
        with self.environment.watch() as watch:
            with unittest.mock.patch.object(watch, "fileno", return_value=never):
                start = time.monotonic()
                self.assertFalse(watch.wait(0.05))
                self.assertGreater(time.monotonic() - start, 0.04)
        os.close(never)
        os.close(end)

    def test_waiting_for_what_is_never_reported_is_refused(self):
        with self.environment.watch() as watch:
            with unittest.mock.patch.object(watch, "fileno", return_value=-1):
                with self.assertRaisesRegex(OSError, "no changes"):
                    watch.wait(0)

    def test_nothing_is_left_open(self):
        def descriptors():
            return len(os.listdir("/proc/self/fd"))

        before = descriptors()
        for _ in range(3):
            with self.environment.watch() as watch:
                self.assertGreater(descriptors(), before)
                kept = watch.environment()
        self.environment.watch()
        self.assertEqual(descriptors(), before)
        self.assertIsNone(kept.find("none"))


class ReceiptTest(TreeTest):
    def test_says_which_answers_have_changed(self):
        file = pathlib.Path(self.at("names.receipt"))
        names = ["Other", os.fsencode(BAD), "new"]
        other, bad, new = (self.at(name) for name in ("b/Other.zt", "a/" + BAD, "b/new.zt"))
        self.environment.find_with_receipt(names, extensions=iter(["zt"])).save(file)
        receipt = searchpath.Receipt.load(file)
        self.assertEqual(receipt.answers(), [("Other", other), (BAD, bad), ("new", None)])
        self.assertEqual(receipt.verify(), [])
        os.remove(other)
        self.make("b/new.zt")
        changes = receipt.verify()
        self.assertEqual(changes, [("Other", other, None), ("new", None, new)])
        self.assertEqual(changes[1].after, new)
        del receipt
        renewed = changes.renew()
        self.assertEqual(renewed.verify(), [])
        self.assertEqual(renewed.answers(), [("Other", None), (BAD, bad), ("new", new)])

    def test_files_that_fail_are_named(self):
        receipt = self.environment.find_with_receipt([])
        self.make("not.receipt")
        for call in (
            lambda: receipt.save(self.at("gone/names.receipt")),
            lambda: searchpath.Receipt.load(self.at("gone/names.receipt")),
            lambda: searchpath.Receipt.load(self.at("not.receipt")),
        ):
            with self.assertRaisesRegex(OSError, self.root + "/.*receipt"):
                call()


class ImportTest(unittest.TestCase):
    def test_says_what_is_missing(self):
        for library, reason in (
            ("/nowhere/libsearchpath-c.so.0", "cannot open shared object file"),
            (ctypes.util.find_library("c"), "undefined symbol: searchpath_version"),
        ):
            with self.subTest(library=library):
                said = subprocess.run(
                    [sys.executable, "-c", "import searchpath"],
                    env={**os.environ, "SEARCHPATH_C_LIBRARY": library},
                    stderr=subprocess.PIPE,
                    universal_newlines=True,
                )
                self.assertEqual(said.returncode, 1)
                self.assertRegex(said.stderr, "ImportError: searchpath needs .*" + reason)
                self.assertIn("set SEARCHPATH_C_LIBRARY to its path", said.stderr)


if __name__ == "__main__":
    unittest.main()
