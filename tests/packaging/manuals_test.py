"""The manuals and completions that vorn-manual writes, as man and shells read them.

Usage: manuals_test.py BIN, the folder of the programs"""
import os
import re
import subprocess
import sys
import tempfile
import unittest

BIN = sys.argv.pop(1)
TOOLS = ["vorn-export", "vorn-terminal", "vorn-sandbox", "vorn-sample-history"]
PROGRAMS = TOOLS + ["VornMac"]


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


class Manuals(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.share = cls.folder.name
        output_of(f"{BIN}/vorn-manual", cls.share, *PROGRAMS)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def page(self, program):
        return f"{self.share}/man/man1/{program}.1"

    def read_page(self, program):
        with open(self.page(program), encoding="utf-8") as file:
            return file.read()

    def bash(self, program, *words):
        """The completions after the last of `words`."""
        script = (f"source {self.share}/bash-completion/completions/{program}; COMP_WORDS=(\"$@\"); "
                  "COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); "
                  f"_{program.replace('-', '_')}; printf '%s\\n' \"${{COMPREPLY[@]}}\"")
        return output_of("bash", "-c", script, "bash", program, *words).split()

    def fish(self, line):
        """The completions of `line`, without their descriptions."""
        program = line.split()[0]
        script = f"source {self.share}/fish/vendor_completions.d/{program}.fish; complete -C '{line}'"
        answer = subprocess.run(["fish", "--no-config", "-c", script], check=True, capture_output=True, text=True,
                                env={**os.environ, "HOME": self.share, "XDG_DATA_HOME": self.share})
        return [one.split("\t")[0] for one in answer.stdout.splitlines()]

    def test_pages_are_free_of_mistakes(self):
        for program in PROGRAMS:
            answer = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", self.page(program)], check=True,
                                    capture_output=True, text=True)
            self.assertEqual(answer.stderr, "", program)

    def test_pages_hold_every_line_of_the_help(self):
        def words(text):
            return re.sub(r"[\s,=\[\]]+|\.\.\.", " ", text)
        for program in TOOLS:
            page = re.sub(r"\\f[BIR]|\\&", "", self.read_page(program))
            page = words(page.replace("\\-", "-").replace("\\e", "\\"))
            for line in output_of(f"{BIN}/{program}", "--help").splitlines():
                if re.match(r"Usage:|Options:|Subcommands:|Exit status:", line):
                    continue
                for part in re.split(r" {2,}", line.strip()):
                    part = re.sub(r"^(--\S+ [A-Z]+)=.*", r"\1", part)  # on the page a default follows the help
                    self.assertIn(words(part).strip(), page, program)

    def test_pages_say_what_the_program_is_and_how_it_ends(self):
        page = self.read_page("vorn-terminal")
        self.assertIn(".SH NAME\nvorn\\-terminal \\- Vorn for Mac in a terminal\n", page)
        self.assertIn(".SH EXIT STATUS\n0 done; 2 wrong arguments;", page)
        self.assertIn("\\fB\\-\\-background\\fR \\fIdark|light\\fR\n", page)

    def test_the_window_has_a_page_with_its_keys(self):
        page = self.read_page("VornMac")
        for line in output_of(f"{BIN}/VornMac", "--help").splitlines():
            if found := re.match(r"  -(Vorn\w+) (\S+) +(.+)", line):
                self.assertIn("\\fB\\-{}\\fR \\fI{}\\fR\n{}\n".format(*found.groups()), page)
        self.assertIn("VornMac \\- Shares your Nimbrel chat from this computer\n", page)

    def test_bash_completes_options_commands_and_values(self):
        self.assertEqual(self.bash("vorn-export", "--a"), ["--allow-empty"])
        self.assertEqual(self.bash("vorn-terminal", "s"), ["show", "status", "sign-out"])
        self.assertEqual(self.bash("vorn-terminal", "--background", ""), ["dark", "light"])
        self.assertEqual(self.bash("vorn-terminal", "status", "--"), ["--help", "--json"])
        self.assertEqual(self.bash("vorn-export", "--handle", ""), [])
        self.assertEqual(self.bash("vorn-export", "--database", f"{self.share}/man/m"), [f"{self.share}/man/man1"])
        self.assertEqual(self.bash("vorn-sandbox", "--state", f"{self.share}/man/m"), [f"{self.share}/man/man1"])

    def test_fish_completes_options_commands_and_values(self):
        self.assertEqual(self.fish("vorn-export --al"), ["--allow-empty"])
        self.assertEqual(self.fish("vorn-terminal l"), ["link"])
        self.assertEqual(self.fish("vorn-terminal --background "), ["dark", "light"])
        self.assertEqual(self.fish("vorn-terminal status --j"), ["--json"])

    def test_zsh_reads_what_it_completes_by(self):
        for program in PROGRAMS:
            path = f"{self.share}/zsh/vendor-completions/_{program}"
            with open(path, encoding="utf-8") as file:
                self.assertEqual(file.readline(), f"#compdef {program}\n")
            output_of("zsh", "-n", path)

    def test_refuses_programs_that_it_does_not_know(self):
        for arguments in ([], [self.share], [self.share, "vorn-nothing"]):
            answer = subprocess.run([f"{BIN}/vorn-manual", *arguments], capture_output=True, text=True)
            self.assertEqual((answer.returncode, answer.stderr), (2, "Usage: vorn-manual FOLDER PROGRAM...\n"))


unittest.main()
