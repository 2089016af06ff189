#!/usr/bin/env python3
# Alternates opening /tmp/bigproj in `kelvaro --screenshot` (the platform project removed
# first, so the opening creates it) and `ctags -R` on the same folder, one after the
# other, and prints both medians and their ratio.
# Usage: bench/tools/alternate_open.py [ROUNDS]   (project from generate_project.py)
import subprocess, time, statistics, sys, os, shutil
env = dict(os.environ, HOME='/tmp/h2', QT_QPA_PLATFORM='offscreen')
kel = ['build/Kelvaro.app/Contents/MacOS/kelvaro','--screenshot','/tmp/big.png','/tmp/bigproj']
ctags = ['ctags','-R','--languages=Basic','--langmap=Basic:.klvr','-f','/tmp/tags.out','/tmp/bigproj']
devnull = open(os.devnull, 'w')
k, c = [], []
n = int(sys.argv[1]) if len(sys.argv) > 1 else 20
for i in range(n + 2):
    shutil.rmtree('/tmp/bigproj/bigproj.xcodeproj', ignore_errors=True)
    t = time.perf_counter(); subprocess.run(kel, stdout=devnull, stderr=devnull, env=env); dk = (time.perf_counter() - t) * 1000
    t = time.perf_counter(); subprocess.run(ctags, stdout=devnull, stderr=devnull); dc = (time.perf_counter() - t) * 1000
    if i >= 2: k.append(dk); c.append(dc)
mk, mc = statistics.median(k), statistics.median(c)
print(f"kelvaro open median {mk:.1f} ms (min {min(k):.1f}, max {max(k):.1f}); ctags -R median {mc:.1f} ms (min {min(c):.1f}, max {max(c):.1f}); ratio {mk/mc:.2f}")
