#!/usr/bin/env python3
"""Runs the library and the bare work in turn on the same graphs, and prints a table in Markdown.

    compare_runs.py --build DIRECTORY [--equal] [--no-peers] [NAME...]

Ends with 1 where the two give other coordinates. With --equal that is all it looks at.
"""

import argparse
import math
import os
import random
import resource
import shutil
import signal
import statistics
import subprocess
import sys
from pathlib import Path

BENCH = Path(__file__).resolve().parent
PLACES = (BENCH / "graphs", BENCH.parent / "examples/graphs")
GENERATED = (1_000, 10_000, 100_000)

TOLERANCE = 1e-7
ROUNDS = 5
ROUND_MS = 1_000      # about what a program works on a graph in one round
MOST_RUNS = 200
PEER_SECONDS = 60

DOT = ["dot", "-Grankdir=LR", "-Gsplines=polyline", "-Gnodesep=0.167", "-Granksep=0.417",
       "-Nshape=box", "-Nfixedsize=true", "-Nlabel=", "-Tplain", "-o", os.devnull]
NODE_PEERS = ("dagre", "elk")


class Graph:
    """A text graph without clusters and the sizes of its nodes."""

    def __init__(self, text, sizes):
        self.name, self.text, self.sizes = text.stem, text, sizes
        self.nodes, self.edges, self.flat = [], [], True
        section = ""
        for line in text.read_text().splitlines()[1:]:
            if line.startswith("["):
                section = line
            elif section == "[edges]" and line:
                self.edges.append(line.split('"')[0].split())
            elif section in ("[nodes]", "[clusters]") and line:
                self.nodes.append(line.split()[0])
                self.flat = self.flat and line.split()[-1] == "0"


def stored_graphs():
    for sizes in sorted((BENCH / "graphs").glob("*.sizes")):
        texts = [place / f"{sizes.stem}.txt" for place in PLACES]
        yield Graph(next(text for text in texts if text.exists()), sizes)


def sparse_edges(count):
    """One and a half edges for each node. The nodes stand in layers of the same width; an edge from
    the layer before leads to each of them, and half as many lead one to three layers on."""
    draw = random.Random(11)
    width = math.isqrt(count)
    for to in range(width, count):
        yield (to // width - 1) * width + draw.randrange(width), to
    missing = count + count // 2 - (count - width)
    while missing > 0:
        source = draw.randrange(count)
        to = (source // width + 1 + draw.randrange(3)) * width + draw.randrange(width)
        if to < count:
            missing -= 1
            yield source, to


def generated_graph(count, directory):
    """Written where it is not there yet; the same in every run."""
    directory.mkdir(parents=True, exist_ok=True)
    text, sizes = directory / f"sparse-{count}.txt", directory / f"sparse-{count}.sizes"
    lines = [text.stem, "[nodes]", *(f'{i} "n{i}" 1 0' for i in range(1, count + 1)), "[edges]",
             *(f'{a + 1} {b + 1} ""' for a, b in sparse_edges(count))]
    text.write_text("\n".join(lines) + "\n")
    sizes.write_text("".join(f"{i} {24 + 7 * len(str(i))} 24\n" for i in range(1, count + 1)))
    return Graph(text, sizes)


def chosen_graphs(options):
    stored = sorted((g for g in stored_graphs() if g.flat), key=lambda g: len(g.nodes))
    names = set(options.names) or {g.name for g in stored} | {f"sparse-{n}" for n in GENERATED}
    found = [g for g in stored if g.name in names]
    found += [generated_graph(n, options.build / "graphs") for n in GENERATED
              if f"sparse-{n}" in names]
    missing = names - {g.name for g in found}
    if missing:
        sys.exit(f"There is no flat graph with sizes called {', '.join(sorted(missing))}")
    return found


class Program:
    """The library or the bare work."""

    def __init__(self, path):
        self.path = path
        if not path.exists():
            sys.exit(f"{path} is not there; bench/compare builds it")

    def run(self, graph, *words):
        command = [self.path, graph.text, graph.sizes, *words]
        result = subprocess.run(command, capture_output=True, text=True, check=False)
        if result.returncode != 0:
            sys.exit(f"{self.path.name} fails on {graph.name}: {result.stderr.strip()}")
        return result

    def coordinates(self, graph):
        return self.run(graph, "1", "--dump").stdout.splitlines()

    def measure(self, graph, runs):
        """Milliseconds of a run, the median of some, and megabytes."""
        words = self.run(graph, str(runs)).stderr.split()
        return float(words[1]), float(words[3]) / 1024


def numbers(line):
    return [float(word) for word in line.replace(",", " ").split()[1:]]


def difference(ours, bare):
    """The largest difference between two dumps; infinite where they do not tell of the same."""
    if len(ours) != len(bare):
        return math.inf
    largest = 0.0
    for a, b in zip(ours, bare):
        if a == b:
            continue
        x, y = numbers(a), numbers(b)
        if a.split()[0] != b.split()[0] or len(x) != len(y) or any(map(math.isnan, x + y)):
            return math.inf
        largest = max([largest, *(abs(p - q) for p, q in zip(x, y))])
    return largest


def require_equal(graph, library, bare):
    found = difference(library.coordinates(graph), bare.coordinates(graph))
    if not found <= TOLERANCE:
        sys.exit(f"{graph.name}: the library and the bare work differ by {found:g}")


def measure_in_turn(graph, programs):
    """What each program takes: the medians of its milliseconds and megabytes."""
    runs = [max(1, min(MOST_RUNS, round(ROUND_MS / max(p.measure(graph, 1)[0], 0.01))))
            for p in programs]
    rounds = [[p.measure(graph, n) for p, n in zip(programs, runs)] for _ in range(ROUNDS)]
    return [[statistics.median(column) for column in zip(*(r[i] for r in rounds))]
            for i in range(len(programs))]


def dot_text(graph):
    inch = 72
    sizes = (line.split() for line in graph.sizes.read_text().splitlines())
    nodes = (f"{i} [width={float(w) / inch:.4f},height={float(h) / inch:.4f}]" for i, w, h in sizes)
    return "\n".join(["digraph {", *nodes, *(f"{a} -> {b}" for a, b in graph.edges), "}"])


def limit_processor_time():
    resource.setrlimit(resource.RLIMIT_CPU, (PEER_SECONDS, PEER_SECONDS + 1))


def run_peer(command, text=None):
    """What it prints and its processor seconds; None and the reason where it comes to no end."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    result = subprocess.run(command, input=text, capture_output=True, text=True, check=False,
                            preexec_fn=limit_processor_time)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    if result.returncode == -signal.SIGXCPU:
        return None, f"> {PEER_SECONDS} s"
    if result.returncode != 0:
        return None, "fails"
    return result.stdout, (after.ru_utime - before.ru_utime) + (after.ru_stime - before.ru_stime)


def dot_time(graph):
    printed, seconds = run_peer(DOT, dot_text(graph))
    return seconds if printed is None else milliseconds(1e3 * seconds)


def node_time(peer, graph):
    printed, reason = run_peer(["node", BENCH / "peers.js", peer, graph.text, graph.sizes])
    return reason if printed is None else milliseconds(float(printed))


def peers_here():
    """By name, what gives the time of a graph as a word."""
    peers = {"dot": dot_time} if shutil.which("dot") else {}
    for peer in NODE_PEERS:
        if shutil.which("node") and run_peer(["node", BENCH / "peers.js", peer])[0] is not None:
            peers[peer] = lambda graph, peer=peer: node_time(peer, graph)
    for absent in {"dot", *NODE_PEERS} - set(peers):
        print(f"{absent} is not installed: left out", file=sys.stderr)
    return peers


def milliseconds(value):
    return f"{value:,.0f}" if value >= 100 else f"{value:.3g}"


def row(words):
    print("| " + " | ".join(words) + " |", flush=True)


def print_table(graphs, library, bare, peers):
    row(["graph", "nodes", "edges", "bare work, ms", "nurvex7, ms", "ratio", "bare work, MB",
         "nurvex7, MB", "ratio", *(f"{name}, ms" for name in peers)])
    row(["---"] + ["---:"] * (8 + len(peers)))
    for graph in graphs:
        require_equal(graph, library, bare)
        (bare_ms, bare_mb), (ms, mb) = measure_in_turn(graph, (bare, library))
        row([graph.name, f"{len(graph.nodes):,}", f"{len(graph.edges):,}", milliseconds(bare_ms),
             milliseconds(ms), f"{ms / bare_ms:.1f}", f"{bare_mb:.1f}", f"{mb:.1f}",
             f"{mb / bare_mb:.1f}", *(time(graph) for time in peers.values())])


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--equal", action="store_true")
    parser.add_argument("--no-peers", action="store_true")
    parser.add_argument("names", nargs="*")
    options = parser.parse_args()

    library = Program(options.build / "nurvex7_compare_make")
    bare = Program(options.build / "nurvex7_limit")
    graphs = chosen_graphs(options)
    if options.equal:
        for graph in graphs:
            require_equal(graph, library, bare)
        return
    print_table(graphs, library, bare, {} if options.no_peers else peers_here())


if __name__ == "__main__":
    main()
