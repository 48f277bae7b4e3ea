"""Prints the table of speed of the Python package, in the columns of quillon_bench."""

import argparse
import array
import re
import time

import quillon_direct as direct

from quillon import chart

ROUNDS = 15
CALLS = 10_000


def make_objects(module):
    whole = module.ColumnChart()
    whole.DataSet = module.DataSet()
    return {"chart": whole, "data": whole.DataSet, "point": module.DataPoint(2.5), "series": module.DataSeries("North")}


def compile_loop(statement):
    """A function that runs a statement CALLS times on the objects that it is given, and returns the seconds."""
    source = f"""
def run(chart, data, point, series):
    numbers = range({CALLS})
    start = clock()
    for number in numbers:
        {statement}
    return clock() - start
"""
    names = {"clock": time.perf_counter}
    exec(source, names)
    return names["run"]


def compare_statement(statement):
    run = compile_loop(statement)
    return (lambda: run(**make_objects(chart))), (lambda: run(**make_objects(direct)))


def compare_extend(values):
    numbers = list(values)

    def ours():
        series = chart.DataSeries("North")
        start = time.perf_counter()
        series.extend(values)
        return time.perf_counter() - start

    return ours, lambda: direct.append_points(direct.DataSeries("North"), numbers)


MANY = range(100_000)
CASES = {
    "Python: number get, 10,000": compare_statement("point.Value"),
    "Python: number set, 10,000": compare_statement("point.Value = number"),
    "Python: text get, 10,000": compare_statement("series.Name"),
    "Python: text set, 10,000": compare_statement("series.Name = 'South'"),
    "Python: object get, 10,000": compare_statement("chart.DataSet"),
    "Python: object set, 10,000": compare_statement("chart.DataSet = data"),
    "Python: appendPoint, 10,000": compare_statement("series.appendPoint(1.5)"),
    "Python: extend, array of 100,000": compare_extend(array.array("d", MANY)),
    "Python: extend, list of 100,000": compare_extend([float(number) for number in MANY]),
}


def measure(case):
    """The best time of ours and of the baseline, which run in turns."""
    ours, baseline = CASES[case]
    times = [(ours(), baseline()) for _ in range(ROUNDS)]
    return min(time[0] for time in times), min(time[1] for time in times)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--benchmark_filter", default="")
    pattern = parser.parse_known_args()[0].benchmark_filter
    for case in filter(re.compile(pattern).search, CASES):
        ours, baseline = measure(case)
        print(f"{case:<34} {ours * 1e6:12.1f} {baseline * 1e6:12.1f} {ours / baseline:7.3f}", flush=True)


if __name__ == "__main__":
    main()
