"""The tables of the benchmarks: a row that misses its limit ends the program with a failure."""
import contextlib
import io
import os
import sys
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../../bench"))
import table


class Table(unittest.TestCase):
    def printed(self, *ratios):
        with contextlib.redirect_stdout(io.StringIO()) as output:
            for ratio in ratios:
                table.row("links", "1 ns", "2 ns", ratio, "2 ns")
        return output.getvalue()

    def test_says_of_each_row_whether_it_reaches_its_limit(self):
        self.assertEqual(self.printed(0.5), "| links | 1 ns | 2 ns | 0.50 | 2 ns | yes |\n")
        table.end()
        self.assertEqual(self.printed(1.01), "| links | 1 ns | 2 ns | 1.01 | 2 ns | NO |\n")
        with self.assertRaises(SystemExit) as ended:
            table.end()
        self.assertEqual(ended.exception.code, "not reached: links")


unittest.main()
