"""Starts a program and reads its window over the accessibility bus; called by script/screen-reader."""
import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

TITLES = {"events": "Edit Events", "upissues": "Edit UP Issues", "sbmodules": "Edit SB Modules"}
MOST_CHILDREN = 100
faults = []


def wait_for(what, find, seconds=30):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        found = find()
        if found:
            return found
        time.sleep(0.1)
    raise SystemExit(f"No {what} within {seconds} s")


def below(node):
    """All that shows, in reading order."""
    yield node
    for i in range(min(node.get_child_count(), MOST_CHILDREN)):
        child = node.get_child_at_index(i)
        if child and child.get_state_set().contains(Atspi.StateType.SHOWING):
            yield from below(child)


def text_of(node):
    text = node.get_text_iface()
    return Atspi.Text.get_text(text, 0, -1) if text else ""


def label_of(node):
    for relation in node.get_relation_set():
        if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
            return relation.get_target(0).get_name()
    return ""


def is_nameless(node):
    if node.get_role_name() == "table cell" or node.get_parent().get_role_name() == "combo box":
        return False  # an empty cell; the inner part of a box
    return shows(node, Atspi.StateType.FOCUSABLE) and not node.get_name() and not label_of(node)


def spoken(node):
    parts = [label_of(node), node.get_name(), node.get_role_name(), text_of(node), node.get_description()]
    return ", ".join(part.replace("\n", " ") for part in dict.fromkeys(parts) if part)


def named(root, role, part=""):
    for node in below(root):
        if node.get_role_name() == role and part in node.get_name():
            return node
    return None


def windows():
    desktop = Atspi.get_desktop(0)
    for i in range(desktop.get_child_count()):
        app = desktop.get_child_at_index(i)
        for j in range(app.get_child_count() if app else 0):
            if window := app.get_child_at_index(j):
                yield window


def window_of(title):
    return next((window for window in windows() if title in window.get_name()), None)


def answer_messages():
    for window in windows():
        if window.get_role_name() in ("alert", "dialog"):
            print("Message:", " ".join(text for node in below(window) if (text := node.get_name())))
            press("Return")


def focused(window):
    """The control that has the focus; a row says so of itself whether its list has it or not."""
    for node in below(window):
        if shows(node, Atspi.StateType.FOCUSED) and node.get_role_name() not in ("table cell", "list item", "page tab"):
            return node
    return None


def press(*keys):
    subprocess.run(["xdotool", "key", *keys], check=True)


def shows(node, state):
    return node.get_state_set().contains(state)


def text_in(window, name):
    field = named(window, "text", name)
    return text_of(field) if field else ""


def expect(what, find):
    """Something that a step must lead to, said aloud."""
    told = wait_for(what, find)
    print(f"{what}: {told}")
    return told


def read_window(editor):
    window = wait_for("window", lambda: window_of(TITLES[editor]))
    wait_for("record", lambda: answer_messages() or text_in(window, "Name"))
    focus = ["xdotool", "search", "--onlyvisible", "--name", TITLES[editor], "windowfocus", "--sync"]
    subprocess.run(focus, check=True)  # no window manager does it
    print(f"\n{editor}, as it opens:")
    for node in below(window):
        told = spoken(node)
        if node.get_role_name() not in ("filler", "table column header"):
            print("  ", told)
        if is_nameless(node):
            faults.append(f"{editor}: no name: {told}")
    return window


def walk_with_tab(window):
    first = before = None
    while True:
        press("Tab")
        node = wait_for("focus", lambda: (now := focused(window)) and now != before and now)
        print("Tab:", spoken(node))
        if node == first:
            return
        first, before = first or node, node


def selected_row(window):
    tree = named(window, "tree", "Records")
    rows = Atspi.Table.get_selected_rows(tree)
    return ", ".join(Atspi.Table.get_accessible_at(tree, row, 0).get_name() for row in rows)


def work_through_events(window):
    press("ctrl+l")
    expect("Ctrl+L", lambda: spoken(focused(window)) if focused(window) else "")
    subprocess.run(["xdotool", "type", "pirate"], check=True)
    press("Down")
    row = expect("Down", lambda: selected_row(window))
    press("Return")
    expect("Enter", lambda: text_in(window, "Name") in row and text_in(window, "Name"))
    press("ctrl+e")
    expect("Edit", lambda: (status := named(window, "label", "READY FOR EDITS")) and spoken(status))


def main():
    program, *words = sys.argv[1:]
    for editor in TITLES:
        running = subprocess.Popen([program, *words, "--edit", editor])
        try:
            window = read_window(editor)
            walk_with_tab(window)
            if editor == "events":
                work_through_events(window)
        finally:
            running.terminate()
            running.wait()
    print("\n".join(["", *faults]) if faults else "\nAll that can have the focus has a name.")
    return 1 if faults else 0


sys.exit(main())
