#!/usr/bin/env python3
"""Turns the JSON of the benchmark programs into bench/RESULTS.md: the
machine, the command, a table of medians, the ratios the targets call for,
and a gnuplot PNG of the skinning throughputs when gnuplot is there."""
import json
import os
import platform
import shutil
import subprocess
import sys
import tempfile


def medians(paths):
    out = {}
    for path in paths:
        with open(path) as f:
            data = json.load(f)
        for b in data["benchmarks"]:
            if b.get("aggregate_name") == "median":
                out[b["run_name"]] = b
    return out


def cpu_flags():
    try:
        with open("/proc/cpuinfo") as f:
            flags = next(line for line in f if line.startswith("flags")).split()
        return ", ".join(x for x in ("sse2", "avx2", "avx512f") if x in flags)
    except (OSError, StopIteration):
        return "unknown"


def load():
    try:
        with open("/proc/loadavg") as f:
            return f.read().split()[0]
    except OSError:
        return "unknown"


def cpu_model():
    try:
        with open("/proc/cpuinfo") as f:
            for line in f:
                if line.startswith("model name"):
                    return line.split(":", 1)[1].strip()
    except OSError:
        pass
    return platform.processor()


def kept_section(path, heading):
    """The lines of the section under heading in the existing report, up to
    the next section, preceded by an empty line; none when there is none."""
    try:
        with open(path) as f:
            old = f.read().split("\n")
    except OSError:
        return []
    if heading not in old:
        return []
    start = old.index(heading)
    end = next((i for i in range(start + 1, len(old)) if old[i].startswith("## ")), len(old))
    section = old[start:end]
    while section and not section[-1]:
        section.pop()
    return [""] + section


def main():
    results, command, plot = sys.argv[1], sys.argv[2], sys.argv[3]
    m = medians(sys.argv[4:])

    def t(name):  # median CPU time in ns
        b = m.get(name)
        return b["cpu_time"] if b else None

    lines = ["# Benchmark results", "",
             f"Machine: {cpu_model()}, {subprocess.run(['nproc'], capture_output=True, text=True).stdout.strip()}"
             f" logical cores ({cpu_flags()}), {platform.system()} {platform.release()};"
             f" load average {load()} when the report was written.", "",
             f"Command: `{command}`", "",
             "Medians of the repetitions; ratios use CPU time (vertices per second for the two-thread row), and "
             "are times of the baseline over times of the subject (above 1 means faster).", "", "## Targets", "",
             "| Target | Measured | Goal |", "|---|---|---|"]

    def ratio(a, b):
        return f"{t(a) / t(b):.2f}x" if t(a) and t(b) else "n/a"

    def row(label, baseline, subject, goal):
        lines.append(f"| {label} | {ratio(baseline, subject)} | {goal} |")

    big = "4/1000000/12"
    row("Skinning 4 influences 1M: published vs scalar", "Skin/Scalar/" + big, "Skin/Published/" + big, ">= 3x")
    row("Skinning vs GLM loop", "Skin/GLM/" + big, "Skin/Published/" + big, ">= 2x")
    row("Skinning vs Eigen loop", "Skin/Eigen/" + big, "Skin/Published/" + big, ">= 2x")
    # A threaded run reports its wall time divided by the thread count, so the
    # speed-up comes from the vertices per second of the whole run.
    one, two = m.get("Skin/Published/" + big), m.get("Skin/PublishedTwoThreads/" + big + "/real_time/threads:2")
    speedup = f"{two['items_per_second'] / one['items_per_second']:.2f}x" if one and two else "n/a"
    lines.append(f"| Skinning on two threads vs one (vertices per second, wall time) | {speedup} | reported |")
    for n in ("1", "8"):
        row(f"Morphing {n} target(s): bandwidth vs streaming loop", f"Morph/Streaming/{n}", f"Morph/Published/{n}",
            ">= 0.8 (for 8)")
    for kind in ("f3Points", "f4Points", "d3Points", "d4Points", "f3Vectors", "f4Vectors"):
        row(f"Array transform {kind}, 100k: published vs scalar", f"Transform/Scalar/{kind}/100000",
            f"Transform/Published/{kind}/100000", ">= 2x" if kind.endswith("Points") else "reported")
    row("Culling 100k boxes and spheres: published vs per-volume dispatch", "Cull/Dispatch", "Cull/Published", ">= 5x")
    row("Culling 100k boxes and spheres: published vs scalar loop over values", "Cull/Scalar", "Cull/Published",
        "reported")
    row("4x4 float product vs GLM", "Product/GLM", "Product/Float", ">= 1")
    row("4x4 float product vs Eigen", "Product/Eigen", "Product/Float", ">= 1")
    row("Dispatch box/sphere: direct call vs through the tables", "BoxSphere/DirectCall",
        "BoxSphere/ThroughIntersect", ">= 0.67 (at most 1.5x the time)")
    for pair in ("PlaneBox", "PlaneSphere", "PlaneRay"):
        row(f"Dispatch {pair}: direct call vs through the tables", f"Dispatch/{pair}/Direct",
            f"Dispatch/{pair}/Table", ">= 0.67")

    lines += ["", "## Against the peers", "",
              "Time of the peer over time of the library (above 1: the library is faster).", "",
              "| Work | vs GLM | vs Eigen |", "|---|---|---|"]
    for work in ("Invert", "InvertAffine", "Slerp", "QuatToMatrix"):
        for p in ("f", "d"):
            lines.append(f"| {work} ({p}) | {ratio(f'{work}/GLM/{p}', f'{work}/ZEMath/{p}')} | "
                         f"{ratio(f'{work}/Eigen/{p}', f'{work}/ZEMath/{p}')} |")
    for kind in ("f3Points", "f4Points", "d3Points", "d4Points"):
        lines.append(f"| Array transform {kind}, 100k | {ratio(f'Transform/GLM/{kind}/100000', f'Transform/Published/{kind}/100000')} | "
                     f"{ratio(f'Transform/Eigen/{kind}/100000', f'Transform/Published/{kind}/100000')} |")
    lines.append(f"| intersectRay, front side (GLM's test does less) | "
                 f"{ratio('IntersectRay/GLM', 'IntersectRay/ZEMath/FrontSide')} | n/a |")
    lines += ["", "## The library's own trigonometry against the C library's", "",
              "Time of the C library's function over time of the library's own (`zePortable...`) on the same "
              "4096 inputs (above 1: the library's own is faster).", "",
              "| Function | float | double |", "|---|---|---|"]
    for fn in ("sin", "cos", "sincos", "tan", "asin", "acos", "atan", "atan2"):
        lines.append(f"| {fn} | {ratio(f'Trig/{fn}/f/CLibrary', f'Trig/{fn}/f/Portable')} | "
                     f"{ratio(f'Trig/{fn}/d/CLibrary', f'Trig/{fn}/d/Portable')} |")
    lines += ["", "## Culling 100k volumes against a frustum", "",
              "Half boxes, half spheres, against six planes (`CullingBench`): nanoseconds per volume, and the time "
              "of the per-volume loop through the dispatch tables over the variant's (above 1: the variant is "
              "faster).", "", "| Variant | ns per volume | vs per-volume dispatch |", "|---|---|---|"]
    for variant in ("Dispatch", "Scalar", "sse2", "avx2", "avx512", "Published"):
        if t(f"Cull/{variant}"):
            lines.append(f"| {variant} | {t(f'Cull/{variant}') / 1e5:.2f} | {ratio('Cull/Dispatch', f'Cull/{variant}')} |")
    # The before/after comparison of the inline operations was measured across
    # two builds of the library, which this run cannot repeat: it is kept.
    lines += kept_section(results, "## Inline operations in a user's build")
    lines += ["", "## All medians", "", "| Benchmark | Time (ns) | CPU (ns) | Items/s |", "|---|---|---|---|"]
    for name, b in m.items():
        ips = b.get("items_per_second")
        lines.append(f"| {name} | {b['real_time']:.0f} | {b['cpu_time']:.0f} | {ips / 1e6:.1f}M |" if ips
                     else f"| {name} | {b['real_time']:.1f} | {b['cpu_time']:.1f} | |")

    if shutil.which("gnuplot"):
        variants = ["Scalar", "sse2", "avx2", "avx512", "Published", "GLM", "Eigen"]
        rows = []
        for k in range(1, 5):
            row = [str(k)]
            for v in variants:
                b = m.get(f"Skin/{v}/{k}/1000000/12")
                row.append(f"{b['items_per_second'] / 1e6:.2f}" if b and b.get("items_per_second") else "0")
            rows.append(" ".join(row))
        data = os.path.join(tempfile.mkdtemp(), "skinning.dat")
        with open(data, "w") as f:
            f.write("\n".join(rows) + "\n")
        script = (f"set terminal png size 900,500; set output '{plot}';"
                  "set title 'Skinning, 1M vertices, stride 12'; set xlabel 'influences';"
                  "set ylabel 'million vertices per second'; set style data histograms;"
                  "set style fill solid; set key outside;"
                  + "plot " + ", ".join(f"'{data}' using {i + 2}:xtic(1) title '{v}'" for i, v in enumerate(variants)))
        subprocess.run(["gnuplot", "-e", script], check=False)
        lines += ["", f"![Skinning throughput]({plot.split('/')[-1]})"]

    with open(results, "w") as f:
        f.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
