#!/usr/bin/env python3
"""Times `kelvaro --find WORD PROJECT` against `rg -F -n --column WORD PROJECT`, the two
run alternately, and prints the medians.

usage: alternate_find.py PROJECT WORD RUNS   (from the source folder, after a build)
"""
import os
import statistics
import subprocess
import sys
import time

K = os.path.join("build", "Kelvaro.app", "Contents", "MacOS", "kelvaro")
P, word, n = sys.argv[1], sys.argv[2], int(sys.argv[3])
cmds={"kelvaro":[K,"--find",word,P],"rg":["rg","-F","-n","--column",word,P]}
t={k:[] for k in cmds}
for i in range(n):
    for k,c in cmds.items():
        s=time.perf_counter(); subprocess.run(c,stdout=subprocess.DEVNULL); t[k].append(time.perf_counter()-s)
mk=statistics.median(t["kelvaro"])*1000; mr=statistics.median(t["rg"])*1000
print(f"{word!r}: kelvaro {mk:.1f} ms, rg {mr:.1f} ms, ratio {mk/mr:.2f}")
