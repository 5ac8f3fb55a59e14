"""Prints the medians of Google Benchmark as a table.

Columns: time, throughput, and time relative to the job's reference, which is "bare", "floor" or the first name.
"""
import json
import sys

with open(sys.argv[1], encoding="utf-8") as results:
    entries = json.load(results)["benchmarks"]
runs = [run for run in entries if run.get("aggregate_name") == "median"]

medians = {}
for run in runs:
    job, who = run["run_name"].removesuffix("/real_time").rsplit("/", 1)
    medians.setdefault(job, {})[who] = run

print(f'{"job":52} {"who":20} {"ms":>8} {"Mpixel/s":>9} {"time/peer":>10}')
for job, people in medians.items():
    peer = people.get("bare", people.get("floor", people[min(people)]))
    for who, run in people.items():
        ratio = run["real_time"] / peer["real_time"]
        print(f'{job:52} {who:20} {run["real_time"]:8.2f} {run["Mpixel/s"]:9.0f} {ratio:10.2f}')

for job, reason in sorted({(run["run_name"].removesuffix("/real_time"), run["error_message"])
                           for run in entries if run.get("error_occurred")}):
    print(f"{job}: {reason}")
