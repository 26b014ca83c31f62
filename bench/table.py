"""Rows of the benchmarks' tables, in Markdown. Each says whether it reaches its limit."""
import sys

_missed = []


def heads(product, peer):
    print(f"| What | {product} | {peer} | Product / what to reach | Reach | Reached |")
    print("| --- | --- | --- | --- | --- | --- |")


def row(what, product, peer, ratio, reach):
    if ratio > 1:
        _missed.append(what)
    print(f"| {what} | {product} | {peer} | {ratio:.2f} | {reach} | {'yes' if ratio <= 1 else 'NO'} |", flush=True)


def end():
    """Ends the program with status 1 if a row did not reach its limit."""
    if _missed:
        sys.exit("not reached: " + ", ".join(_missed))
