"""A desktop of its own: a screen in memory, and a message bus that offers accessibility and nothing else."""
import os
import struct
import subprocess
import tempfile

# Without the machine's own services: a keyring would be started, and ask for its password.
BUS = """<busconfig>
  <type>session</type>
  <listen>unix:path={folder}/bus</listen>
  <auth>EXTERNAL</auth>
  <servicedir>{folder}/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""
ACCESSIBILITY = "/usr/share/dbus-1/services/org.a11y.Bus.service"


class Desktop:
    """Lasts for a `with`; programs started meanwhile appear on it. Once per process: libraries keep their bus."""

    def __init__(self, width=1280, height=800):
        self._size = f"{width}x{height}x24"
        self._processes = []

    def __enter__(self):
        self._folder = tempfile.TemporaryDirectory(prefix="vorn-desktop-")
        path = self._folder.name
        os.chmod(path, 0o700)
        os.mkdir(path + "/services")
        os.symlink(ACCESSIBILITY, path + "/services/org.a11y.Bus.service")
        with open(path + "/bus.conf", "w", encoding="utf-8") as file:
            file.write(BUS.format(folder=path))
        os.environ["XDG_RUNTIME_DIR"] = path
        os.environ["DISPLAY"] = ":" + self._start_for_line(
            ["Xvfb", "-displayfd", "{}", "-screen", "0", self._size, "-fbdir", path, "-nolisten", "tcp", "-noreset"])
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self._start_for_line(
            ["dbus-daemon", "--nofork", "--nosyslog", "--config-file=" + path + "/bus.conf", "--print-address={}"])
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = os.environ["DBUS_SESSION_BUS_ADDRESS"]  # not the machine's
        return self

    def __exit__(self, *_):
        for process in reversed(self._processes):
            process.terminate()
            process.wait(timeout=20)
        self._folder.cleanup()

    def _start_for_line(self, command):
        """Starts a program that writes a line to the descriptor that replaces {}, and returns that line."""
        reading, writing = os.pipe()
        with open(reading, encoding="utf-8") as lines:
            # The program ends with the test, even if the test is killed.
            command = ["setpriv", "--pdeathsig", "KILL", *[word.replace("{}", str(writing)) for word in command]]
            self._processes.append(subprocess.Popen(command, pass_fds=[writing], stdout=subprocess.DEVNULL,
                                                    stderr=subprocess.DEVNULL))
            os.close(writing)
            line = lines.readline().strip()
        assert line, "does not start: " + " ".join(command)
        return line

    def picture(self):
        """The screen's current content."""
        with open(self._folder.name + "/Xvfb_screen0", "rb") as file:
            content = file.read()
        # An X window dump: its header consists of big-endian 32-bit numbers.
        header = struct.unpack(">25I", content[:100])
        width, height, row = header[4], header[5], header[12]
        assert header[11] == 32 and row == 4 * width and header[7] == 0, "not four bytes a pixel, the lowest first"
        start = header[0] + 12 * header[19]  # after the header and the colour map
        return Picture(width, height, content[start:start + row * height])


class Picture:
    """Its pixels have four bytes each: blue, green, red, and one without meaning."""

    def __init__(self, width, height, pixels):
        self._width = width
        self._height = height
        self._pixels = pixels

    def colour(self, x, y):
        """In the Web's notation, such as #0e0f10."""
        start = 4 * (y * self._width + x)
        return "#" + self._pixels[start:start + 3][::-1].hex()

    def window(self):
        """Left edge, top, width and height of everything but the black of an empty screen."""
        rows = [self._pixels[start:start + 4 * self._width] for start in range(0, len(self._pixels), 4 * self._width)]
        drawn = [index for index, row in enumerate(rows) if row.strip(b"\0")]
        middle = rows[(drawn[0] + drawn[-1]) // 2]
        left = (len(middle) - len(middle.lstrip(b"\0"))) // 4
        width = -(-len(middle.strip(b"\0")) // 4)
        return left, drawn[0], width, len(drawn)

    def pixmap(self):
        """The bytes of a portable pixmap file."""
        content = bytearray(3 * self._width * self._height)
        for channel in range(3):
            content[channel::3] = self._pixels[2 - channel::4]
        return b"P6 %d %d 255\n" % (self._width, self._height) + bytes(content)
