"""Reads documents, and runs programs."""
import json
import os
import re
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
BIN = os.path.abspath(sys.argv.pop(1)) if len(sys.argv) > 1 else ""


def read(name):
    with open(os.path.join(ROOT, name), encoding="utf-8") as file:
        return file.read()


def section(document, heading):
    """The text below `heading`, up to the next of its rank or above."""
    found = re.search(rf"^(#+) {re.escape(heading)}\n(.*?)(?=^#{{1,6}} |\Z)", document, re.MULTILINE | re.DOTALL)
    assert found, f"there is no heading {heading}"
    rank = len(found[1])
    rest = document[found.end(1):]
    end = re.search(rf"^#{{1,{rank}}} ", rest[1:], re.MULTILINE)
    return rest[:end.start() + 1] if end else rest


def tables(text):
    """Each table as its rows, which are lists of cells; the first row is the heading."""
    for block in re.findall(r"(?:^\|.*\|\n)+", text, re.MULTILINE):
        rows = [[cell.strip() for cell in line.strip("|").split(" | ")] for line in block.splitlines()]
        rows = [[cell.strip("| ") for cell in row] for row in rows]
        yield [row for row in rows if not all(re.fullmatch(r"-+", cell) for cell in row)]


def code_blocks(text):
    return re.findall(r"^```(?!mermaid)\w*\n(.*?)^```", text, re.MULTILINE | re.DOTALL)


def output_of(program, *arguments, **more):
    return subprocess.run([os.path.join(BIN, program), *arguments], check=True, capture_output=True, text=True,
                          **more).stdout


def facts():
    return json.loads(output_of("vorn-facts"))


def pattern_of(text):
    """A pattern for a sentence of a document, in which an ellipsis stands for a part that varies."""
    return re.compile(".+".join(re.escape(piece) for piece in text.split("…")) + r"\Z", re.DOTALL)
