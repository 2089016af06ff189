#!/usr/bin/env python3
# Alternates `kelvaro --scan` and ctags on the scanner corpus, one run of each after the
# other, and prints the medians, their ratios and the growth for twice the size.
# Usage: bench/tools/alternate_scan.py [ROUNDS]   (corpus in /tmp/corpus, see docs/SCANNER.md)
import subprocess, time, statistics, sys, os
cmds = {
 'scan200k': ['build/Kelvaro.app/Contents/MacOS/kelvaro','--scan','/tmp/corpus/Big.NSObject.klvr'],
 'scan400k': ['build/Kelvaro.app/Contents/MacOS/kelvaro','--scan','/tmp/corpus/Big2.NSObject.klvr'],
 'ctags200k': ['ctags','--language-force=Basic','-f','-','/tmp/corpus/Big.NSObject.klvr'],
 'ctags400k': ['ctags','--language-force=Basic','-f','-','/tmp/corpus/Big2.NSObject.klvr'],
 'scanUtf8': ['build/Kelvaro.app/Contents/MacOS/kelvaro','--scan','/tmp/corpus/BigUtf8.NSObject.klvr'],
 'ctagsUtf8': ['ctags','--language-force=Basic','-f','-','/tmp/corpus/BigUtf8.NSObject.klvr'],
}
times = {k: [] for k in cmds}
devnull = open(os.devnull, 'w')
for i in range(int(sys.argv[1]) if len(sys.argv) > 1 else 40):
    for k, c in cmds.items():
        t = time.perf_counter(); subprocess.run(c, stdout=devnull, stderr=devnull); times[k].append((time.perf_counter() - t) * 1000)
m = {k: statistics.median(v) for k, v in times.items()}
for k in cmds: print(f"{k:10s} median {m[k]:7.1f} ms  (min {min(times[k]):.1f}, max {max(times[k]):.1f})")
print(f"ratio 200k {m['scan200k']/m['ctags200k']:.2f}, 400k {m['scan400k']/m['ctags400k']:.2f}, utf8 {m['scanUtf8']/m['ctagsUtf8']:.2f}")
print(f"growth for 2x size: kelvaro {m['scan400k']/m['scan200k']:.2f}x, ctags {m['ctags400k']/m['ctags200k']:.2f}x")
