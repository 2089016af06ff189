#!/bin/sh
# Times the checker against ctags on a generated 1,000-file x 1,000-line project, and
# the runner on a 10-million-iteration loop. Usage: bench/tools/measure.sh [BUILD_DIR]
set -e
BUILD=${1:-build}
TOOLS=$BUILD/Kelvaro.app/Contents/MacOS
WORK=$(mktemp -d)
P=$WORK/Big
python3 "$(dirname "$0")/generate_project.py" "$P" 1000 1000
echo "project: $(ls "$P" | wc -l) files, $(cat "$P"/*.klvr | wc -l) lines, $(du -sh "$P" | cut -f1)"
for i in 1 2 3; do
  /usr/bin/time -f "ctags -R: %e s wall, %U s user, %S s system" \
    ctags -R --languages=Basic --langmap=Basic:.klvr -f "$WORK/tags" "$P"
done
for i in 1 2 3; do
  rm -rf "$P/build"
  /usr/bin/time -f "klvrcompiler -Release: %e s wall, %U s user, %S s system" \
    "$TOOLS/klvrcompiler" "$P" -Release | grep Checked
done
mkdir -p "$WORK/Loop"
printf '\nEvent AwakeFromNib()\n  Dim s As Integer = 0\n  Dim i As Integer\n  For i = 1 To 10000000\n    s = s + i Mod 7\n  Next\n  Print(s)\nEnd Event\n' \
  > "$WORK/Loop/Global.NSObject.klvr"
printf '\nEvent AwakeFromNib()\n  Dim s As Integer = 0\n  Dim i As Integer = 0\n  While i < 10000000\n    i = i + 1\n    If i Mod 2 = 0 Then\n      s = s + 1\n    End If\n  Wend\n  Print(s)\nEnd Event\n' \
  > "$WORK/While.klvr"
mkdir -p "$WORK/While" && mv "$WORK/While.klvr" "$WORK/While/Global.NSObject.klvr"
for prog in Loop While; do
  /usr/bin/time -f "klvrrun $prog (10,000,000 iterations): %e s wall, %U s user" "$TOOLS/klvrrun" "$WORK/$prog"
done
uptime
rm -rf "$WORK"
