#!/usr/bin/env python3
"""Writes a Kelvaro project of FILES class files of about LINES lines each, for timing
the checker against ctags on the same folder.

usage: generate_project.py FOLDER [FILES] [LINES]
"""
import os
import sys


def method(cls, k):
    return [
        f"Public Function Compute{k}(a As Integer, b As Integer) As Integer",
        f"  ' adds and loops ({cls})",
        "  Dim total As Integer = 0",
        "  Dim text As String = \"value: \"",
        "  For i = a To b Step 1",
        "    If i Mod 3 = 0 Then",
        "      total = total + i * 2",
        "    Else If i Mod 5 = 0 Then",
        "      total = total - 1",
        "    Else",
        "      total = total + Len(text) + counter",
        "    End If",
        "  Next",
        "  While total > 1000",
        "    total = total \\ 2",
        "  Wend",
        f"  text = text & Str(total) + Left(\"abcdef\", 3)",
        f"  Helper{k} total, text",
        "  Return total",
        "End Function",
        "",
        f"Sub Helper{k}(n As Integer, s As String)",
        "  Select Case n",
        "    Case 1, 2",
        "      counter = counter + n",
        "    Case Else",
        "      label = UCase(s) + Mid(s, 1, 2)",
        "  End Select",
        "End Sub",
        "",
    ]


def write_class(path, cls, lines):
    out = [
        f"' class {cls}",
        "Dim counter As Integer",
        "Dim label As String",
        "",
    ]
    k = 0
    while len(out) + len(method(cls, k)) + 3 <= lines:
        out.extend(method(cls, k))
        k += 1
    while len(out) + 3 < lines:
        out.append("' padding")
    out.append("Event AwakeFromNib()")
    out.append("  counter = Compute0(1, 10)")
    out.append("End Event")
    with open(path, "w") as f:
        f.write("\n".join(out) + "\n")


def main():
    folder = sys.argv[1]
    files = int(sys.argv[2]) if len(sys.argv) > 2 else 1000
    lines = int(sys.argv[3]) if len(sys.argv) > 3 else 1000
    os.makedirs(folder, exist_ok=True)
    write_class(os.path.join(folder, "Global.NSObject.klvr"), "Global", lines)
    for n in range(1, files):
        write_class(os.path.join(folder, f"c{n}.NSObject.klvr"), f"c{n}", lines)


if __name__ == "__main__":
    main()
