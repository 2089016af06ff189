#!/usr/bin/env python3
# Runs each program of bench/tools/runner with klvrrun and its Python twin with python3,
# one after the other, and prints the medians and the ratio klvrrun / python3 (whole
# processes, start-up included). Usage: bench/tools/alternate_runner.py [ROUNDS] [BUILD_DIR]
import os, statistics, subprocess, sys, time
here = os.path.join(os.path.dirname(os.path.abspath(__file__)), 'runner')
rounds = int(sys.argv[1]) if len(sys.argv) > 1 else 11
runner = os.path.join(sys.argv[2] if len(sys.argv) > 2 else 'build', 'Kelvaro.app/Contents/MacOS/klvrrun')
names = ['fib', 'loop', 'array', 'dict', 'calls']
def timed(cmd):
    t = time.perf_counter()
    out = subprocess.run(cmd, capture_output=True, text=True)
    return time.perf_counter() - t, out.stdout.strip(), out.returncode
print(f"{'program':8s} {'klvrrun':>9s} {'python3':>9s} {'ratio':>6s}")
for name in names:
    k, p = [], []
    for _ in range(rounds):
        tk, ok, rk = timed([runner, os.path.join(here, name)])
        tp, op, rp = timed(['python3', os.path.join(here, name + '.py')])
        if rk != 0 or ok != op:
            sys.exit(f"{name}: klvrrun printed {ok!r} (exit {rk}), python3 printed {op!r}")
        k.append(tk); p.append(tp)
    mk, mp = statistics.median(k), statistics.median(p)
    print(f"{name:8s} {mk*1000:7.0f}ms {mp*1000:7.0f}ms {mk/mp:6.2f}")
