#!/usr/bin/env python3
"""Latency and memory of `kvx-demosaic tune`: from a changed setting to the pixels that a window of 1280x720 shows.

    bench/tools/tune.py TOOL [OPTION...] FRAME
"""
import http.client
import json
import statistics
import subprocess
import sys
import time
from urllib.parse import urlencode, urlsplit

WINDOW = (928, 656)  # what a page of 1280x720 has left for the picture
RUNS = 7


def main():
    tool, *arguments = sys.argv[1:]
    process = subprocess.Popen([tool, "tune", "--no-browser", *arguments], stdout=subprocess.PIPE, text=True)
    address = urlsplit(process.stdout.readline().strip())
    connection = http.client.HTTPConnection(address.hostname, address.port)

    def ask(path, **values):
        connection.request("GET", f"{address.path}{path}?{urlencode(values)}")
        answer = connection.getresponse()
        body = answer.read()
        assert answer.status == 200, body
        return body

    start = time.monotonic()
    info = json.loads(ask("controls", frame=0))
    print(f"{info['name']}, {info['format']}, {info['levels'][0]}: opened in {time.monotonic() - start:.2f} s")
    algorithms = next(c for c in info["controls"] if c["option"] == "algorithm")["words"]
    print("algorithm    view    median/ms  largest/ms")
    whole = next(i for i, (w, h) in enumerate(info["levels"]) if w <= WINDOW[0] and h <= WINDOW[1])
    for algorithm in algorithms:
        for view, level in (("whole", whole), ("1:1", 0)):
            width, height = info["levels"][level]
            w, h = min(width, WINDOW[0] + 128), min(height, WINDOW[1] + 128)  # tiles at the edges
            times = []
            for run in range(RUNS + 1):
                settings = json.dumps({"algorithm": algorithm, "look": "natural", "black-level": str(run)})
                start = time.monotonic()
                ask("part", frame=0, s=settings, level=level, x=(width - w) // 2, y=(height - h) // 2, w=w, h=h)
                times.append(1e3 * (time.monotonic() - start))
            print(f"{algorithm:12} {view:6} {statistics.median(times[1:]):10.1f} {max(times[1:]):11.1f}")
    with open(f"/proc/{process.pid}/status", encoding="ascii") as status:
        memory = {line.split()[0]: int(line.split()[1]) // 1024 for line in status if line.startswith("Vm")}
    print(f"memory: {memory['VmRSS:']} MB, at most {memory['VmHWM:']} MB")
    process.terminate()


if __name__ == "__main__":
    main()
