"""One installation, one game: whoever starts it, however often, and whatever dies meanwhile."""

import collections
import os
import signal
import time
import unittest

from support import ALREADY_RUNNING, LAUNCHED, LOCKED, WineWorld, lock_is_held, wait_until


class Lock(WineWorld):
    def setUp(self):
        super().setUp()
        self.stand_in(4294967295)
        # A second launcher has another engine, which the scan for running games doesn't take for the first one's: only
        # the lock stands between them.
        self.second = self.make_launcher("second launcher")

    def start_detached(self, folder=None, launcher=None):
        answer = self.console("start", folder or self.game, "--detach", launcher=launcher)
        self.assertEqual((answer.status, answer.line["message"]), (0, LAUNCHED), answer.errors)

    def assert_refused(self, sentence, folder=None, launcher=None):
        answer = self.console("start", folder or self.game, launcher=launcher)
        self.assertEqual((answer.status, answer.line["process"], answer.line["message"]), (1, False, sentence))

    def test_32_starters_at_once_give_one_game_and_31_refusals(self):
        starters = [
            self.start_console("start", self.game, "--detach", launcher=(self.launcher, self.second)[i % 2])
            for i in range(32)
        ]
        messages = collections.Counter(self.finish(starter).line["message"] for starter in starters)
        self.assertEqual(messages[LAUNCHED], 1, messages)
        self.assertEqual(messages[ALREADY_RUNNING] + messages[LOCKED], 31, messages)
        self.assertEqual(len(self.log()), 1)
        self.assertEqual(list(self.processes().values()).count("quake2.exe"), 1)

    def test_killed_launcher_leaves_game_and_lock(self):
        lock = self.lock_file()
        starter = self.start_console("start", self.game)
        game = self.game_process()
        starter.kill()
        self.finish_killed(starter)
        self.assertTrue(lock_is_held(lock))
        self.assert_refused(LOCKED, launcher=self.second)
        wait_until(self.log, "the game has written its log")
        self.assert_refused(ALREADY_RUNNING)
        self.assertEqual(self.process_named("quake2.exe"), game)
        self.assertTrue(lock_is_held(lock))
        self.assertEqual(len(self.log()), 1)

    def finish_killed(self, starter):
        starter.communicate()
        self.assertEqual(starter.returncode, -signal.SIGKILL)

    def test_killed_game_frees_the_lock_within_100_ms_while_wine_lives_on(self):
        lock = self.lock_file()
        self.start_detached()
        self.assertTrue(lock_is_held(lock))
        game = self.game_process()

        killed = time.monotonic()
        os.kill(game, signal.SIGKILL)
        wait_until(lambda: not lock_is_held(lock), "the lock is free")
        elapsed = time.monotonic() - killed

        self.assertLess(elapsed, 0.1)
        left = self.processes().values()
        self.assertTrue(any(name.startswith("wineserver") for name in left), left)
        self.start_detached()
        self.assertEqual(len(self.log()), 2)

    def test_killed_game_is_an_end_that_the_launcher_tells(self):
        starter = self.start_console("start", self.game)
        self.assertIn(b'"process":true', starter.stdout.readline())
        self.kill_game()
        answer = self.finish(starter)
        self.assertEqual(answer.status, 0)
        self.assertNotEqual(answer.line["exitCode"], 0)
        self.assertRegex(answer.line["message"], "^Quake II exited with error [0-9]+[.] See baseq2/qconsole[.]log")

    def test_killed_supervisor_takes_the_game_with_it(self):
        self.start_detached()
        game = self.game_process()
        for process, name in self.processes().items():
            if name.startswith("wine_supervisor"[:15]):
                os.kill(process, signal.SIGKILL)
        wait_until(lambda: game not in self.processes(), "the game ends")
        self.assertFalse(lock_is_held(self.lock_file()))

    def test_two_spellings_of_a_folder_have_one_lock(self):
        (self.root / "link").symlink_to(self.game)
        spellings = [self.root / "quake ii", f"{self.game}/baseq2/..", self.root / "link", f"{self.game}/"]
        self.start_detached()
        for spelling in spellings:
            with self.subTest(str(spelling)):
                self.assertEqual(self.lock_file(spelling), self.lock_file())
                self.assert_refused(LOCKED, spelling, launcher=self.second)
        self.assertEqual(len(list((self.state / "VelorinthLauncher").glob("Quake2-*"))), 1)

    def test_two_installations_run_side_by_side_from_two_launchers_but_not_from_one(self):
        other = self.make_installation(self.root / "another Quake II")
        self.stand_in(4294967295, folder=other)
        self.start_detached()
        self.assert_refused(ALREADY_RUNNING, other)
        self.start_detached(other, launcher=self.second)
        self.assertNotEqual(self.lock_file(other), self.lock_file())

    def test_deleted_lock_file_of_a_game_that_ended_changes_nothing(self):
        self.start_detached()
        self.kill_game()
        lock = self.lock_file()
        wait_until(lambda: not lock_is_held(lock), "the lock is free")
        lock.unlink()
        wait_until(lambda: not self.process_named("quake2.exe"), "the game has gone")
        self.start_detached()
        self.assertTrue(lock_is_held(lock))


if __name__ == "__main__":
    unittest.main()
