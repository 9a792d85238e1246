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


def cpu_info():
    """The first processor's fields in /proc/cpuinfo."""
    fields = {}
    try:
        with open("/proc/cpuinfo") as f:
            for line in f:
                if not line.strip():
                    break
                key, _, value = line.partition(":")
                fields[key.strip()] = value.strip()
    except OSError:
        pass
    return fields


def cpu_flags():
    flags = cpu_info().get("flags", "").split()
    if not flags:
        return "unknown"
    have = ", ".join(x for x in ("sse2", "avx2", "fma", "avx512f") if x in flags)
    return have if "avx512f" in flags else have + "; no AVX-512"


def cpu_core():
    """The core design of an AMD processor, from its family and model, where known."""
    info = cpu_info()
    if info.get("vendor_id") != "AuthenticAMD":
        return ""
    try:
        family, model = int(info["cpu family"]), int(info["model"])
    except (KeyError, ValueError):
        return ""
    if family == 23:
        return "Zen or Zen 2"
    if family == 25:
        return "Zen 4" if 0x10 <= model < 0x20 or model >= 0x60 else "Zen 3"
    if family == 26:
        return "Zen 5"
    return ""


def load():
    try:
        with open("/proc/loadavg") as f:
            return f.read().split()[0]
    except OSError:
        return "unknown"


def cpu_model():
    name = cpu_info().get("model name") or platform.processor()
    core = cpu_core()
    return f"{name} ({core})" if core else name


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
             "| Target | Measured | Goal | Status |", "|---|---|---|---|"]

    def ratio(a, b):
        return f"{t(a) / t(b):.2f}x" if t(a) and t(b) else "n/a"

    def row(label, baseline, subject, goal):
        lines.append(f"| {label} | {ratio(baseline, subject)} | {goal} | |")

    # Skinning targets: realistic weights, 4 influences; the limit is the
    # better of the limit loop's normal and non-temporal stores.
    def limit(shape, family="Skin"):
        times = [t(f"{family}/{v}/{shape}") for v in ("Limit", "LimitNT")]
        times = [x for x in times if x]
        return min(times) if times else None

    def percent(subject, shape, family="Skin"):
        a, b = limit(shape, family), t(subject)
        return 100.0 * a / b if a and b else None

    def speedup(subject, baseline):
        a, b = t(baseline), t(subject)
        return a / b if a and b else None

    def why(share):
        if share is None:
            return ""
        if share > 100:
            return (f"ran at {share:.0f}% of the memory limit: faster than the loop that only moves its bytes, "
                    "which a quiet run must not show (noise, or a wrong limit)")
        if share >= 70:
            return f"runs at {share:.0f}% of the memory limit: memory holds it"
        return (f"runs at {share:.0f}% of the memory limit: its instructions hold it (memory would allow "
                f"{100 / share:.1f}x its speed)")

    def target(label, value, goal, unit, why_missing, share=None):
        if value is None:
            lines.append(f"| {label} | n/a | {goal} | not run: {why_missing} |")
            return
        shown = f"{value:.0f}%" if unit == "%" else f"{value:.2f}x"
        need = float(goal.split()[1].rstrip("%x"))
        status = "met" if value >= need else "missed"
        reason = why(share if share is not None else value if unit == "%" else None)
        lines.append(f"| {label} | {shown} | {goal} | {status}{'; ' + reason if reason else ''} |")

    no_avx512 = ("this processor has no AVX-512, so the path's speed cannot be measured here; its bits are held "
                 "to the scalar loop's, byte for byte, by scripts/emulated-avx512.sh")
    for stride in (12, 32):
        shape = f"4/1000000/{stride}"
        target(f"Skinning, AVX-512 path, 1M, stride {stride}: share of the memory limit",
               percent(f"Skin/avx512/real/{shape}", shape), ">= 40% (aim 50%)", "%", no_avx512)
    for stride in (12, 32):
        shape = f"4/10000/{stride}"
        target(f"Skinning, AVX-512 path, 10k, stride {stride}: vs the scalar loop",
               speedup(f"Skin/avx512/real/{shape}", f"Skin/Scalar/real/{shape}"), ">= 4x", "x", no_avx512,
               percent(f"Skin/avx512/real/{shape}", shape))
    for path, goal in (("avx2", ">= 2.5x"), ("sse2", ">= 2x")):
        for count in ("10000", "1000000"):
            for stride in (12, 32):
                shape = f"4/{count}/{stride}"
                size = "1M" if count == "1000000" else "10k"
                target(f"Skinning, {path.upper()} path, {size}, stride {stride}: vs the scalar loop",
                       speedup(f"Skin/{path}/real/{shape}", f"Skin/Scalar/real/{shape}"), goal, "x",
                       f"this processor has no {path.upper()}", percent(f"Skin/{path}/real/{shape}", shape))
    big = "real/4/1000000/12"
    row("Skinning 4 influences 1M: published vs scalar", "Skin/Scalar/" + big, "Skin/Published/" + big, ">= 3x")
    row("Skinning vs GLM loop", "Skin/GLM/" + big, "Skin/Published/" + big, ">= 2x")
    row("Skinning vs Eigen loop", "Skin/Eigen/" + big, "Skin/Published/" + big, ">= 2x")
    # A threaded run reports its wall time divided by the thread count, so the
    # speed-up comes from the vertices per second of the whole run.
    one, two = m.get("Skin/Published/" + big), m.get("Skin/PublishedTwoThreads/" + big + "/real_time/threads:2")
    twice = f"{two['items_per_second'] / one['items_per_second']:.2f}x" if one and two else "n/a"
    lines.append(f"| Skinning on two threads vs one (vertices per second, wall time) | {twice} | reported | |")
    for n in ("1", "8"):
        target(f"Morphing {n} target(s), 1M: share of the memory limit", percent(f"Morph/Published/{n}", n, "Morph"),
               ">= 90%", "%", "not measured")
    target("Culling 100k boxes and spheres: published vs per-volume dispatch",
           speedup("Cull/Published", "Cull/Dispatch"), ">= 5x", "x", "CullingBench did not run")
    row("Culling 100k boxes and spheres: published vs scalar loop over values", "Cull/Scalar", "Cull/Published",
        "reported")
    for kind in ("f3Points", "f4Points", "d3Points", "d4Points", "f3Vectors", "f4Vectors"):
        row(f"Array transform {kind}, 100k: published vs scalar", f"Transform/Scalar/{kind}/100000",
            f"Transform/Published/{kind}/100000", ">= 2x" if kind.endswith("Points") else "reported")
    row("4x4 float product vs GLM", "Product/GLM", "Product/Float", ">= 1")
    row("4x4 float product vs Eigen", "Product/Eigen", "Product/Float", ">= 1")
    row("Dispatch box/sphere: direct call vs through the tables", "BoxSphere/DirectCall",
        "BoxSphere/ThroughIntersect", ">= 0.67 (at most 1.5x the time)")
    for pair in ("PlaneBox", "PlaneSphere", "PlaneRay"):
        row(f"Dispatch {pair}: direct call vs through the tables", f"Dispatch/{pair}/Direct",
            f"Dispatch/{pair}/Table", ">= 0.67")

    notes = ["", "Skinning targets are measured on realistic weights with 4 influences per vertex; a share of the "
             "limit is the limit loop's time over the path's."]
    try:
        busy = float(load()) > 1.0
    except ValueError:
        busy = False
    if busy:
        notes.append(f"The load average was {load()} when the report was written: other work shared the cores, so "
                     "these figures are noisy, the memory limit most of all.")
    lines += notes

    # Skinning against the scalar loop and the memory limit, as vertex
    # buffers are skinned: each kernel row gives its time, its speed-up over
    # the scalar loop and its share of the limit.
    def when(ns):
        return f"{ns / 1e6:.2f} ms" if ns >= 1e6 else f"{ns / 1e3:.1f} us"

    def cell(subject, scalar, shape, family="Skin"):
        time, base = t(subject), t(scalar)
        if not time:
            return "not run"
        share = percent(subject, shape, family)
        return (f"{when(time)} ({base / time:.2f}x scalar" if base else f"{when(time)} (")  \
            + (f", {share:.0f}% of the limit)" if share else ")")

    def skin_cell(name, shape, kind):
        return cell(f"Skin/{name}/{kind}/{shape}", f"Skin/Scalar/{kind}/{shape}", shape)

    def limit_cell(shape, family="Skin"):
        normal, nt = t(f"{family}/Limit/{shape}"), t(f"{family}/LimitNT/{shape}")
        if not normal and not nt:
            return "not run"
        better = "non-temporal" if nt and (not normal or nt < normal) else "normal"
        return f"{when(limit(shape, family))} ({better} stores)"

    published = m.get("Skin/Published/real/4/1000000/12", {}).get("label", "")
    skin_rows = [("scalar loop of the written order", "Scalar"),
            (f"published kernel ({published or 'chosen path'})", "Published"),
            ("AVX-512 path", "avx512"), ("AVX2 path", "avx2"), ("SSE2 path", "sse2"),
            ("GLM loop", "GLM"), ("Eigen loop", "Eigen")]
    weights = {"real": "realistic weights (1 to 4 counted per vertex)", "all": "all weights counting"}
    lines += ["", "## Skinning against the memory limit", "",
              "Realistic weights: each vertex counts 1 to 4 of its influences (uniform), the other slots weigh "
              "exactly 0 with index 0; 64-matrix palette. The limit is a loop in the same program that reads the "
              "bytes the kernel reads (sources, weights, indices) and writes 12 bytes per vertex at the stride, "
              "with the widest vectors the processor has and the better of normal and non-temporal stores. Cells: "
              "median time (speed-up over the scalar loop, share of the limit)."]
    if not any(name.startswith("Skin/avx512/") for name in m):
        lines[-1] += (" This processor has no AVX-512: its rows are not run, and no figure for them is given; the "
                      "path's bits are held to the scalar loop's by scripts/emulated-avx512.sh.")
    for kind in ("real", "all"):
        for count, label in (("1000000", "1M"), ("10000", "10k")):
            lines += ["", f"| 4 influences, {label} vertices, {weights[kind]} | stride 12 | stride 32 |",
                      "|---|---|---|"]
            for title, name in skin_rows:
                lines.append(f"| {title} | {skin_cell(name, f'4/{count}/12', kind)} | "
                             f"{skin_cell(name, f'4/{count}/32', kind)} |")
            lines.append(f"| streaming the same bytes (the limit) | {limit_cell(f'4/{count}/12')} | "
                         f"{limit_cell(f'4/{count}/32')} |")
    lines += ["", "| 1M vertices, stride 12, realistic weights | 1 influence | 2 | 3 | 4 |", "|---|---|---|---|---|"]
    for title, name in skin_rows:
        lines.append(f"| {title} | " + " | ".join(skin_cell(name, f"{k}/1000000/12", "real") for k in range(1, 5))
                     + " |")
    lines.append("| streaming the same bytes (the limit) | "
                 + " | ".join(limit_cell(f"{k}/1000000/12") for k in range(1, 5)) + " |")

    # The one-weight kernel and morphing, the same way.
    one_label = m.get("OneWeight/Published/1/1000000/12", {}).get("label", "")
    path_rows = [("scalar loop of the written order", "Scalar"),
                 (f"published kernel ({one_label or 'chosen path'})", "Published"), ("AVX-512 path", "avx512"),
                 ("AVX2 path", "avx2"), ("SSE2 path", "sse2")]
    one_shapes = [f"1/{c}/{st}" for c in ("10000", "1000000") for st in (12, 32)]
    lines += ["", "| One-weight kernel (reads sources and indices) | 10k, stride 12 | 10k, stride 32 | 1M, stride 12 | "
              "1M, stride 32 |", "|---|---|---|---|---|"]
    for title, name in path_rows:
        lines.append(f"| {title} | " + " | ".join(cell(f"OneWeight/{name}/{sh}", f"OneWeight/Scalar/{sh}", sh,
                                                      "OneWeight") for sh in one_shapes) + " |")
    lines.append("| streaming the same bytes (the limit) | "
                 + " | ".join(limit_cell(sh, "OneWeight") for sh in one_shapes) + " |")
    lines += ["", "| Morphing, 1M vectors (reads the base and every target) | 1 target | 8 targets |",
              "|---|---|---|"]
    path_rows[1] = ("published kernel", "Published")
    for title, name in path_rows:
        lines.append(f"| {title} | " + " | ".join(cell(f"Morph/{name}/{n}", f"Morph/Scalar/{n}", n, "Morph")
                                                  for n in ("1", "8")) + " |")
    lines.append("| streaming the same bytes (the limit) | "
                 + " | ".join(limit_cell(n, "Morph") for n in ("1", "8")) + " |")

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
              "faster)."]
    if t("Cull/Dispatch") and not t("Cull/avx512"):
        lines[-1] += (" This processor has no AVX-512: that path is not run and has no figure; its results are "
                      "held to the scalar loop's, byte for byte, by scripts/emulated-avx512.sh.")
    lines += ["", "| Variant | ns per volume | vs per-volume dispatch |", "|---|---|---|"]
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
                b = m.get(f"Skin/{v}/real/{k}/1000000/12")
                row.append(f"{b['items_per_second'] / 1e6:.2f}" if b and b.get("items_per_second") else "0")
            rows.append(" ".join(row))
        data = os.path.join(tempfile.mkdtemp(), "skinning.dat")
        with open(data, "w") as f:
            f.write("\n".join(rows) + "\n")
        script = (f"set terminal png size 900,500; set output '{plot}';"
                  "set title 'Skinning, 1M vertices, stride 12, realistic weights'; set xlabel 'influences';"
                  "set ylabel 'million vertices per second'; set style data histograms;"
                  "set style fill solid; set key outside;"
                  + "plot " + ", ".join(f"'{data}' using {i + 2}:xtic(1) title '{v}'" for i, v in enumerate(variants)))
        subprocess.run(["gnuplot", "-e", script], check=False)
        lines += ["", f"![Skinning throughput]({plot.split('/')[-1]})"]

    with open(results, "w") as f:
        f.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
