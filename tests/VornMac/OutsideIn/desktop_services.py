"""The services of a desktop on the bus of a test: notifications, logind, and a dock that shows progress."""
import os
import select
import threading

from gi.repository import Gio, GLib

NOTIFICATIONS = "org.freedesktop.Notifications"
LOGIND = "org.freedesktop.login1"
LAUNCHER = "com.canonical.Unity.LauncherEntry"
INTERFACES = """<node>
  <interface name="org.freedesktop.Notifications">
    <method name="GetCapabilities"><arg type="as" direction="out"/></method>
    <method name="Notify"><arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
      <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/></method>
    <method name="CloseNotification"><arg type="u" direction="in"/></method>
  </interface>
  <interface name="org.freedesktop.login1.Manager">
    <method name="Inhibit"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="s" direction="in"/>
      <arg type="s" direction="in"/><arg type="h" direction="out"/></method>
  </interface>
</node>"""


class DesktopServices:
    """Runs for the length of a `with`, and records each call as a pair of the method and its arguments."""

    def __enter__(self):
        self.calls = []
        self.progress = []  # each bar that was shown, 0…1; None if it was removed
        self._locks = []
        self._loop = GLib.MainLoop.new(GLib.MainContext.new(), False)
        ready = threading.Event()
        self._thread = threading.Thread(target=self._run, args=(ready,))
        self._thread.start()
        assert ready.wait(20), "the services do not start"
        return self

    def __exit__(self, *_):
        self._loop.quit()
        self._thread.join()
        for lock in self._locks:
            os.close(lock)

    def asked(self, method):
        """The arguments of each call of `method`."""
        return [arguments for name, arguments in self.calls if name == method]

    def is_awake(self):
        """Whether a program still holds a lock."""
        return any(not select.select([lock], [], [], 0)[0] for lock in self._locks)

    def click(self, notification):
        self._bus.emit_signal(None, "/org/freedesktop/Notifications", NOTIFICATIONS, "ActionInvoked",
                              GLib.Variant("(us)", (notification, "default")))

    def _run(self, ready):
        self._loop.get_context().push_thread_default()
        flags = Gio.DBusConnectionFlags
        self._bus = Gio.DBusConnection.new_for_address_sync(
            os.environ["DBUS_SESSION_BUS_ADDRESS"], flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)
        node = Gio.DBusNodeInfo.new_for_xml(INTERFACES)
        for path, interface in zip(("/org/freedesktop/Notifications", "/org/freedesktop/login1"), node.interfaces):
            self._bus.register_object(path, interface, self._answer, None, None)
        self._bus.signal_subscribe(None, LAUNCHER, "Update", None, None, Gio.DBusSignalFlags.NONE, self._update)
        for name in (NOTIFICATIONS, LOGIND):
            self._bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                                GLib.Variant("(su)", (name, 0)), None, Gio.DBusCallFlags.NONE, -1, None)
        ready.set()
        self._loop.run()
        self._bus.close_sync(None)
        self._loop.get_context().pop_thread_default()

    def _answer(self, _bus, _sender, _path, _interface, method, arguments, call):
        self.calls.append((method, arguments.unpack()))
        if method == "GetCapabilities":
            call.return_value(GLib.Variant("(as)", (["actions", "body"],)))
        elif method == "Notify":
            call.return_value(GLib.Variant("(u)", (1,)))
        elif method == "Inhibit":
            reading, writing = os.pipe()
            self._locks.append(reading)
            files = Gio.UnixFDList.new_from_array([writing])  # closes it
            call.return_value_with_unix_fd_list(GLib.Variant("(h)", (0,)), files)
        else:
            call.return_value(None)

    def _update(self, _bus, _sender, _path, _interface, _signal, arguments):
        _application, properties = arguments.unpack()
        self.progress.append(properties["progress"] if properties["progress-visible"] else None)
