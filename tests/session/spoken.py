"""Reads a program's windows as a screen reader does, and acts on them with the pointer and the keyboard.

    program = spoken.Program(pid)
    program.click(program.find("push button", "Cancel"))
"""

import os
import signal
import subprocess
import sys
import time

# The further cells of a long table show nothing new.
MOST_CHILDREN = 400
SKIPPED = 77
# Roles whose children are not queried, since every query costs a round trip to the program.
LEAVES = ("label", "push button", "radio button", "check box", "list item", "table cell", "table column header", "text",
          "separator", "chart")
TABLES = ("tree", "table")
CELLS = ("table cell", "table column header")
# Newer versions of AT-SPI and Qt use other role names.
RENAMED = {"button": "push button", "push button menu": "push button"}
WINDOWS = ("frame", "dialog", "popup menu")


def within(seconds, condition):
    """Polls until condition() is true or the time is up; returns its last result."""
    end = time.monotonic() + seconds
    while True:
        result = condition()
        if result or time.monotonic() > end:
            return result
        time.sleep(0.1)


def skip(reason):
    print("skipped: " + reason, flush=True)
    sys.exit(SKIPPED)


class Bus:
    """The accessibility bus, started as a desktop does. Ends the launcher on exit."""

    LAUNCHER = "/usr/libexec/at-spi-bus-launcher"

    def __init__(self):
        if not os.access(self.LAUNCHER, os.X_OK):
            skip("this machine has no bus for screen readers (" + self.LAUNCHER + ")")
        os.environ.pop("NO_AT_BRIDGE", None)
        os.environ["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        self.process = subprocess.Popen([self.LAUNCHER, "--launch-immediately"],
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def __enter__(self):
        if not within(10, self.is_owned):
            self.__exit__()
            skip("the bus for screen readers does not come up")
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
            self.process.wait(10)

    @staticmethod
    def is_owned():
        address = ["gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path", "/org/a11y/bus",
                   "--method", "org.a11y.Bus.GetAddress"]
        asked = subprocess.run(address, capture_output=True, check=False)
        return asked.returncode == 0


def bindings():
    try:
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi, GLib
    except (ImportError, ValueError) as missing:
        skip("the bindings for screen readers are missing: " + str(missing))
    return Atspi, GLib


class Program:
    """The visible part of a program's accessibility tree. Nothing is cached between two calls."""

    def __init__(self, pid):
        self.atspi, self.glib = bindings()
        self.pid = pid
        self.atspi.init()

    def root(self):
        desktop = self.atspi.get_desktop(0)
        for number in range(desktop.get_child_count()):
            root = desktop.get_child_at_index(number)
            if root and root.get_process_id() == self.pid:
                root.set_cache_mask(self.atspi.Cache.NONE)
                return root
        return None

    def has(self, node, state):
        return node.get_state_set().contains(getattr(self.atspi.StateType, state))

    def showing(self, node=None, most=MOST_CHILDREN, within=lambda role: role not in LEAVES):
        """Every visible node with its role, parents first; `within` decides by role whether to descend.
        Skips nodes that disappear meanwhile."""
        try:
            node = node or self.root()
            if not node:
                return
            said = node.get_role_name()
            role = RENAMED.get(said, said)
            children = node.get_child_count() if within(role) else 0
        except self.glib.Error:
            return
        yield node, role
        for number in range(min(children, most)):
            try:
                child = node.get_child_at_index(number)
                seen = child and self.has(child, "SHOWING")
            except self.glib.Error:
                continue
            if seen:
                yield from self.showing(child, most, within)

    def look(self, role, name, inside=None):
        """The first node of a role whose name equals `name`, or satisfies it if it is callable; otherwise None."""
        fits = name if callable(name) else lambda text: text == name
        passed_over = LEAVES if role in CELLS else (*LEAVES, *TABLES)
        if role in WINDOWS:
            passed_over = (*passed_over, *WINDOWS)
        for node, its_role in self.showing(inside, within=lambda each: each not in passed_over):
            try:
                if its_role == role and fits(node.get_name()):
                    return node
            except self.glib.Error:
                continue
        return None

    def every(self, role, name=None, inside=None):
        """All visible nodes of a role, and of a name if one is given."""
        passed_over = LEAVES if role in CELLS else (*LEAVES, *TABLES)
        found = []
        for node, its_role in self.showing(inside, within=lambda each: each not in passed_over):
            try:
                if its_role == role and name in (None, node.get_name()):
                    found.append(node)
            except self.glib.Error:
                continue
        return found

    def find(self, role, name, inside=None, seconds=15):
        """Like look(), but waits for the node; raises LookupError if it does not appear."""
        found = within(seconds, lambda: self.look(role, name, inside))
        if not found:
            raise LookupError(f"no {role} {'' if callable(name) else repr(name) + ' '}shows within {seconds} s")
        return found

    def place(self, node):
        return node.get_extents(self.atspi.CoordType.SCREEN)

    def click(self, node, button=1):
        place = self.place(node)
        xdotool("mousemove", place.x + place.width // 2, place.y + place.height // 2, "click", button)

    def right_click(self, node):
        self.click(node, 3)

    def nameless(self):
        """Focusable controls without a name or a proper role. Cells may be empty: their column head names them."""
        for node, role in self.showing(most=60):
            if role in ("table cell", "label") or not self.has(node, "FOCUSABLE"):
                continue
            name = node.get_name()
            if not name or role in ("unknown", "filler", "invalid"):
                yield f"{role} '{name}' in '{node.get_parent().get_name()}'"


def xdotool(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True)


def press(*keys):
    xdotool("key", "--clearmodifiers", *keys)


def write(text):
    xdotool("type", "--delay", 10, text)


def picture(path):
    subprocess.run(["import", "-window", "root", str(path)], check=True)
