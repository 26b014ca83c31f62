"""Runs packaging/macos/release with stand-ins for a Mac's tools that record their calls.

Usage: release_test.py ROOT, the folder of the project"""
import json
import os
import subprocess
import sys
import tempfile
import unittest

ROOT = sys.argv.pop(1)
IDENTITY = "Developer ID Application: Vorn (ABCDE12345)"
RELEASE = ["--identity", IDENTITY, "--notary-profile", "vorn"]
TOOLS = ["arch", "cmake", "codesign", "ditto", "git", "hdiutil", "lipo", "ln", "macdeployqt", "osascript", "otool", "rm", "sandbox-exec",
         "shasum", "spctl", "xcrun"]
# Records its call, does what the next step needs of it, and fails if the test says so.
STAND_IN = """#!%(python)s
import json, os, shutil, subprocess, sys
name, words = os.path.basename(sys.argv[0]), sys.argv[1:]
line = " ".join([name] + words)
if name == "arch": # the program after the processor and the environment, found here instead of in Homebrew
    words = words[1:]
    if words[0] == "env": words = words[2:]
    if words[0] == "sandbox-exec": words = words[0:2] + ["PROFILE"] + words[3:]
    with open(os.environ["CALLS"], "a") as file: file.write(json.dumps(["arch", sys.argv[1]]) + "\\n")
    sys.exit(subprocess.run(words).returncode)
with open(os.environ["CALLS"], "a") as file: file.write(json.dumps([name] + words) + "\\n")
if os.environ.get("FAILS") and os.environ["FAILS"] in line: sys.exit(1)
MACH_O = bytes.fromhex("cffaedfe")
PLIST = b"<plist><dict><key>LSMinimumSystemVersion</key><string>13.4</string></dict></plist>"
def put(path, content):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file: file.write(content)
if name == "cmake" and words[0] == "--build":
    put(words[1] + "/bin/Vorn.app/Contents/MacOS/Vorn", MACH_O)
    put(words[1] + "/bin/Vorn.app/Contents/Info.plist", PLIST)
if name == "macdeployqt":
    contents = words[0] + "/Contents/"
    put(contents + "Frameworks/QtCore.framework/Versions/A/QtCore", MACH_O)
    os.symlink("A", contents + "Frameworks/QtCore.framework/Versions/Current")
    put(contents + "Frameworks/libfmt.dylib", MACH_O)
    put(contents + "PlugIns/platforms/libqcocoa.dylib", MACH_O)
    put(contents + "PlugIns/sqldrivers/libqsqlite.dylib", MACH_O)
    if os.environ.get("ONLY_INTEL") and "x86_64" in words[0]: put(contents + "Frameworks/libintel.dylib", MACH_O)
if name == "ditto":
    os.makedirs(os.path.dirname(words[1]), exist_ok=True)
    (shutil.copytree if os.path.isdir(words[0]) else shutil.copy)(words[0], words[1], **({"symlinks": True} if os.path.isdir(words[0]) else {}))
if name == "rm": shutil.rmtree(words[1])
if name == "git" and os.environ.get("CHANGED"): print(" M CMakeLists.txt")
"""


class Releases(unittest.TestCase):
    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory(dir=os.path.join(ROOT, "build"))
        self.folder = self.temporary.name
        self.tools = os.path.join(self.folder, "tools")
        os.mkdir(self.tools)
        for name in TOOLS:
            path = os.path.join(self.tools, name)
            with open(path, "w") as file:
                file.write(STAND_IN % {"python": sys.executable})
            os.chmod(path, 0o755)

    def tearDown(self):
        self.temporary.cleanup()

    def release(self, *words, **environment):
        self.calls_file = os.path.join(self.folder, "calls")
        surroundings = {**os.environ, "PATH": f"{self.tools}:{os.environ['PATH']}", "CALLS": self.calls_file, **environment}
        return subprocess.run([sys.executable, "-B", f"{ROOT}/packaging/macos/release", "--output", f"{self.folder}/out", *words],
                              capture_output=True, text=True, env=surroundings)

    def calls(self, name=None):
        with open(self.calls_file, encoding="utf-8") as file:
            calls = [json.loads(line) for line in file]
        return [call for call in calls if name in (None, call[0])]

    def work(self, path):
        return os.path.relpath(f"{self.folder}/out/work/{path}", ROOT)

    def assert_refused(self, answer, sentence):
        self.assertEqual((answer.returncode, answer.stderr), (2, f"release: {sentence}\n"))

    def test_needs_a_certificate_that_users_macs_trust(self):
        self.assert_refused(self.release(), "--identity names the certificate; `security find-identity -v -p codesigning` lists yours")
        self.assert_refused(self.release("--identity", "-"),
                            "an ad-hoc signature is a new one with each build, and Macs would withdraw Full Disk Access at each "
                            "update; it is for --development")
        self.assert_refused(self.release("--identity", "Apple Development: Ann"),
                            'the notary takes no "Apple Development: Ann", only a "Developer ID Application: …"')
        self.assert_refused(self.release("--identity", IDENTITY),
                            "--notary-profile names the notary's credentials; `xcrun notarytool store-credentials` keeps them")

    def test_needs_what_was_committed(self):
        self.assert_refused(self.release(*RELEASE, CHANGED="1"), "there are changes that are not committed")
        self.assertEqual(self.calls("cmake"), [])

    def test_builds_and_deploys_for_both_processors_with_their_own_homebrew(self):
        self.assertEqual(self.release(*RELEASE).returncode, 0)
        configured = [call for call in self.calls("cmake") if call[1] == "--preset"]
        self.assertEqual([call[2:4] + call[5:] for call in configured],
                         [["release", "-B", "-DCMAKE_OSX_ARCHITECTURES=arm64", "-DCMAKE_PREFIX_PATH=/opt/homebrew"],
                          ["release", "-B", "-DCMAKE_OSX_ARCHITECTURES=x86_64", "-DCMAKE_PREFIX_PATH=/usr/local"]])
        self.assertEqual([call[3] for call in self.calls("macdeployqt")], ["-libpath=/opt/homebrew/lib", "-libpath=/usr/local/lib"])
        self.assertEqual([call[2].split("/")[-1] for call in self.calls("rm")], ["sqldrivers", "sqldrivers"])
        joined = [call[-1].split("universal/Vorn.app/")[1] for call in self.calls("lipo")]
        self.assertEqual(joined, ["Contents/Frameworks/QtCore.framework/Versions/A/QtCore", "Contents/Frameworks/libfmt.dylib",
                                  "Contents/MacOS/Vorn", "Contents/PlugIns/platforms/libqcocoa.dylib"])

    def test_builds_for_the_macos_that_is_asked_for(self):
        answer = self.release(*RELEASE, "--dry-run", "--first-macos", "15.0")
        self.assertEqual(answer.stdout.count(" -DCMAKE_OSX_DEPLOYMENT_TARGET=15.0\n"), 2)

    def test_joins_only_bundles_of_the_same_files(self):
        answer = self.release(*RELEASE, ONLY_INTEL="1")
        self.assertEqual((answer.returncode, answer.stderr),
                         (1, "release: only one of both bundles has Contents/Frameworks/libintel.dylib\n"))
        self.assertEqual(self.calls("codesign"), [])

    def test_signs_from_the_inside_out_without_an_entitlement(self):
        self.release(*RELEASE)
        signed = [call for call in self.calls("codesign") if "--sign" in call and not call[-1].endswith(".dmg")]
        for call in signed:
            self.assertEqual(call[1:-1], ["--force", "--timestamp", "--options", "runtime", "--sign", IDENTITY])
        self.assertEqual([call[-1].partition("universal/")[2] for call in signed],
                         ["Vorn.app/Contents/Frameworks/QtCore.framework/Versions/A", "Vorn.app/Contents/PlugIns/platforms/libqcocoa.dylib",
                          "Vorn.app/Contents/Frameworks/libfmt.dylib", "Vorn.app"])

    def test_stops_at_the_first_command_that_fails(self):
        answer = self.release(*RELEASE, FAILS="--options runtime")
        self.assertEqual((answer.returncode, answer.stderr), (1, "release: codesign failed\n"))
        self.assertEqual(len(self.calls("codesign")), 1)
        self.assertEqual(self.calls("hdiutil"), [])

    def test_packs_notarises_and_verifies_in_this_order(self):
        self.assertEqual(self.release(*RELEASE).returncode, 0)
        names = [" ".join(call[:3]) for call in self.calls()]
        last = names[names.index("ln -s /Applications"):]
        self.assertEqual(last, [
            "ln -s /Applications", "ditto packaging/macos/background.png " + self.work("image/.background/background.png"),
            "hdiutil create -quiet", "hdiutil attach -quiet", "osascript packaging/macos/disk-image.applescript Vorn",
            "hdiutil detach -quiet", "hdiutil convert -quiet", "codesign --force --timestamp", "xcrun notarytool submit",
            "xcrun stapler staple", "xcrun stapler validate", "codesign --verify --strict", "spctl --assess --type",
            "spctl --assess --type", "shasum -a 256"])
        for processor in ("arm64", "x86_64"):  # the signed bundle was started on each, with Homebrew hidden
            self.assertEqual(self.calls("arch").count(["arch", f"-{processor}"]), 4)

    def test_lets_go_of_the_image_when_its_layout_fails(self):
        answer = self.release(*RELEASE, FAILS="osascript")
        self.assertEqual((answer.returncode, answer.stderr), (1, "release: osascript failed\n"))
        self.assertEqual([call[1] for call in self.calls("hdiutil")], ["create", "attach", "detach"])

    def test_a_rehearsal_runs_nothing(self):
        self.assertEqual(self.release(*RELEASE, "--dry-run").returncode, 0)
        self.assertEqual([call for call in self.calls() if call[0] != "git"], [])
        self.assertFalse(os.path.exists(f"{self.folder}/out"))

    def test_a_build_for_development_says_what_its_signature_costs(self):
        answer = self.release("--development", "--dry-run")
        self.assertEqual(answer.returncode, 0)
        self.assertEqual(answer.stdout.splitlines()[0], "# signed ad hoc: after the next build this Mac asks for Full Disk Access again")
        self.assertIn("codesign --force --timestamp=none --options runtime --sign - ", answer.stdout)
        self.assertNotIn("notarytool", answer.stdout)
        self.assertNotIn("lipo", answer.stdout)


if __name__ == "__main__":
    unittest.main()
