#!/usr/bin/env python3
"""End to end: `tavrel-cli render` against the Qt floor of the shared benchmark harness.

    render_e2e.py BINDIR

Runs, as child processes and paired run by run on the same SIF file,

    tavrel-cli render JOB --cover none --body BENCH.cst --summary none --pdf OUT.pdf
    qtfloor ITEMS.sif OUT.pdf

where BENCH.cst is what `bench_body --write-template` writes and ITEMS.sif is what the
harness's gen_items.py writes. Prints wall time, CPU time (user + system), peak resident
memory and pages of both, the time per page, and Tavrel's ratios to the floor (medians over
the repetitions; each ratio is taken within one repetition). Prints figures; never fails on
them.

Environment:
    TAVREL_BENCH_SIZES    item counts, comma-separated (default 10000,50000,100000,200000)
    TAVREL_BENCH_REPS     repetitions per size (default 2)
    TAVREL_BENCH_HARNESS  the harness folder with gen_items.py and qtfloor/
                          (default /work/shared/bench)
    TAVREL_BENCH_WORK     where the SIF files, the floor's build and the PDFs go
                          (default a folder in the system's temporary folder, kept for reuse)
"""

import os
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import time


def env_list(name, default):
    return [int(s) for s in os.environ.get(name, default).split(",") if s.strip()]


def run_child(argv, log_path):
    """Runs argv; returns (wall s, cpu s, peak MB, stderr text, ok)."""
    env = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    with open(log_path, "wb") as log:
        start = time.monotonic()
        child = subprocess.Popen(argv, stdout=subprocess.DEVNULL, stderr=log, env=env)
        _, status, usage = os.wait4(child.pid, 0)
        wall = time.monotonic() - start
        child.returncode = os.waitstatus_to_exitcode(status)
    with open(log_path, "r", errors="replace") as log:
        text = log.read()
    cpu = usage.ru_utime + usage.ru_stime
    return wall, cpu, usage.ru_maxrss / 1024.0, text, child.returncode == 0


def build_floor(harness, work):
    source = os.path.join(harness, "qtfloor")
    if not os.path.isfile(os.path.join(source, "main.cpp")):
        return None
    build = os.path.join(work, "qtfloor-build")
    binary = os.path.join(build, "qtfloor")
    if not os.path.exists(binary):
        subprocess.run(["cmake", "-S", source, "-B", build, "-DCMAKE_BUILD_TYPE=Release"],
                       check=True, stdout=subprocess.DEVNULL)
        subprocess.run(["cmake", "--build", build, "-j2"], check=True,
                       stdout=subprocess.DEVNULL)
    return binary


def make_sif(harness, work, size):
    """gen_items.py writes data/ beside itself, so it runs from a copy in work."""
    sif = os.path.join(work, "data", "items_%d.sif" % size)
    if not os.path.exists(sif):
        for name in ("gen_items.py", "common.py"):
            if os.path.exists(os.path.join(harness, name)):
                shutil.copy(os.path.join(harness, name), work)
        subprocess.run([sys.executable, os.path.join(work, "gen_items.py"), str(size)],
                       check=True, cwd=work, stdout=subprocess.DEVNULL)
    return sif


def write_job(work, size, sif):
    job = os.path.join(work, "job_%d.ini" % size)
    with open(job, "w") as f:
        f.write("[Printer]\nTempPrintDocument=%s\nFontName=Arial\nFontSize=8\n"
                "MarginLeft=720\nMarginRight=720\nMarginTop=720\nMarginBottom=720\n"
                "PrinterDeviceName=\nShowLabel=0\n" % sif)
    return job


def pages_of(pattern, text):
    found = re.findall(pattern, text)
    return int(found[-1]) if found else 0


def main():
    if len(sys.argv) != 2:
        print(__doc__)
        return 2
    bindir = os.path.abspath(sys.argv[1])
    cli = os.path.join(bindir, "tavrel-cli")
    bench_body = os.path.join(bindir, "bench_body")
    harness = os.environ.get("TAVREL_BENCH_HARNESS", "/work/shared/bench")
    work = os.environ.get("TAVREL_BENCH_WORK",
                          os.path.join(tempfile.gettempdir(), "tavrel-bench-e2e"))
    sizes = env_list("TAVREL_BENCH_SIZES", "10000,50000,100000,200000")
    reps = max(1, int(os.environ.get("TAVREL_BENCH_REPS", "2")))
    if not (os.path.exists(cli) and os.path.exists(bench_body)):
        print("render_e2e: skipped, %s has no tavrel-cli or bench_body" % bindir)
        return 0
    if not os.path.isfile(os.path.join(harness, "gen_items.py")):
        print("render_e2e: skipped, no benchmark harness at %s "
              "(set TAVREL_BENCH_HARNESS)" % harness)
        return 0
    os.makedirs(os.path.join(work, "out"), exist_ok=True)
    floor = build_floor(harness, work)
    if floor is None:
        print("render_e2e: no Qt floor at %s/qtfloor; Tavrel is measured alone" % harness)
    template = os.path.join(work, "BENCH.cst")
    subprocess.run([bench_body, "--write-template", template], check=True,
                   env=dict(os.environ, QT_QPA_PLATFORM="offscreen"))

    print("%8s  %-7s %8s %8s %8s %7s %8s   %s" %
          ("items", "who", "wall s", "CPU s", "peak MB", "pages", "ms/page",
           "x wall  x CPU  x mem  x ms/page"))
    for size in sizes:
        sif = make_sif(harness, work, size)
        job = write_job(work, size, sif)
        out = os.path.join(work, "out")
        ours = {"wall": [], "cpu": [], "mem": [], "pages": 0}
        theirs = {"wall": [], "cpu": [], "mem": [], "pages": 0}
        ratios = {"wall": [], "cpu": [], "mem": [], "page": []}
        for rep in range(reps):
            runs = []
            tavrel = ([cli, "render", job, "--cover", "none", "--body", template,
                       "--summary", "none", "--pdf", os.path.join(out, "tavrel_%d.pdf" % size)],
                      ours, r"Laid out (\d+) pages \(", "tavrel")
            runs.append(tavrel)
            if floor:
                runs.append(([floor, sif, os.path.join(out, "floor_%d.pdf" % size)],
                             theirs, r"pages (\d+);", "floor"))
            if rep % 2 == 1:
                runs.reverse()  # neither side always runs on a warm cache
            for argv, figures, pattern, who in runs:
                wall, cpu, mem, text, ok = run_child(
                    argv, os.path.join(out, "%s_%d.log" % (who, size)))
                if not ok:
                    print("render_e2e: %s failed at %d items:\n%s" % (who, size, text[-2000:]))
                    return 0
                figures["wall"].append(wall)
                figures["cpu"].append(cpu)
                figures["mem"].append(mem)
                figures["pages"] = pages_of(pattern, text)
            if floor:
                ratios["wall"].append(ours["wall"][-1] / theirs["wall"][-1])
                ratios["cpu"].append(ours["cpu"][-1] / theirs["cpu"][-1])
                ratios["mem"].append(ours["mem"][-1] / theirs["mem"][-1])
                if ours["pages"] and theirs["pages"]:
                    ratios["page"].append((ours["wall"][-1] / ours["pages"]) /
                                          (theirs["wall"][-1] / theirs["pages"]))

        def row(who, figures, tail):
            wall = statistics.median(figures["wall"])
            pages = figures["pages"]
            per_page = 1000.0 * wall / pages if pages else 0.0
            print("%8d  %-7s %8.2f %8.2f %8.0f %7d %8.2f   %s" %
                  (size, who, wall, statistics.median(figures["cpu"]),
                   statistics.median(figures["mem"]), pages, per_page, tail))

        if floor:
            row("qtfloor", theirs, "")
        tail = ""
        if floor:
            tail = "%5.2f  %5.2f  %5.2f  %5.2f" % tuple(
                statistics.median(ratios[k]) if ratios[k] else 0.0
                for k in ("wall", "cpu", "mem", "page"))
        row("tavrel", ours, tail)
        sys.stdout.flush()
    print("(medians of %d paired runs; ratios are Tavrel / floor within each run)" % reps)

    # The preview: page 1 and page 5,000 of the 100,000-item job (or the largest size run).
    preview = os.path.join(bindir, "bench_preview")
    if os.path.exists(preview) and sizes:
        size = 100000 if 100000 in sizes else max(sizes)
        print("== preview, %d items" % size)
        sys.stdout.flush()
        job = write_job(work, size, make_sif(harness, work, size))
        subprocess.run([preview, job, template, "5000"],
                       env=dict(os.environ, QT_QPA_PLATFORM="offscreen"))
    return 0


if __name__ == "__main__":
    sys.exit(main())
