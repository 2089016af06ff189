#!/usr/bin/env python3
"""Times `kelvaro --lsp` on a generated project: initialize (client side), completion and
definition (server side, p50/p99), incremental changes of a 100,000-line file, the
diagnostics of a 1,000-line file after the debounce, and the peak memory.

usage: lsp_timing.py KELVARO PROJECT BIGFILE
  PROJECT from bench/tools/generate_project.py, BIGFILE from
  `generate_corpus --file BIGFILE --lines 100000`
"""
import json
import os
import random
import subprocess
import sys
import time


class Server:
    def __init__(self, kelvaro):
        env = dict(os.environ, KELVARO_LSP_TIMING="1")
        self.p = subprocess.Popen([kelvaro, "--lsp"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                  stderr=subprocess.PIPE, env=env)
        self.next_id = 0

    def send(self, message):
        message["jsonrpc"] = "2.0"
        body = json.dumps(message).encode()
        self.p.stdin.write(b"Content-Length: %d\r\n\r\n" % len(body) + body)
        self.p.stdin.flush()

    def read(self):
        length = 0
        while True:
            line = self.p.stdout.readline()
            if line in (b"\r\n", b""):
                break
            if line.lower().startswith(b"content-length:"):
                length = int(line.split(b":")[1])
        return json.loads(self.p.stdout.read(length))

    def request(self, method, params):
        self.next_id += 1
        self.send({"id": self.next_id, "method": method, "params": params})
        while True:
            answer = self.read()
            if answer.get("id") == self.next_id:
                return answer

    def notify(self, method, params):
        self.send({"method": method, "params": params})

    def peak_kb(self):
        with open(f"/proc/{self.p.pid}/status") as status:
            for line in status:
                if line.startswith("VmHWM:"):
                    return int(line.split()[1])
        return 0

    def finish(self):
        self.p.stdin.close()
        self.p.wait()
        times, cpu = {}, {}
        for line in self.p.stderr.read().decode().splitlines():
            method, wall, processor = line.rsplit(" ", 2)
            times.setdefault(method, []).append(int(wall) / 1000.0)
            cpu.setdefault(method, []).append(int(processor) / 1000.0)
        return times, cpu


def uri(path):
    return "file://" + os.path.abspath(path)


def percentile(values, p):
    values = sorted(values)
    return values[min(len(values) - 1, int(len(values) * p / 100))]


def main():
    kelvaro, project, big = sys.argv[1:4]
    server = Server(kelvaro)
    started = time.perf_counter()
    server.request("initialize", {"rootUri": uri(project), "capabilities": {}})
    initialize_ms = (time.perf_counter() - started) * 1000
    server.notify("initialized", {})

    path = os.path.join(project, "c7.NSObject.klvr")
    lines = open(path).read().split("\n")
    # "  me." after every method's first line, so that completion has a chain to resolve.
    text = "\n".join(line + ("\n  me." if line.startswith("Public Function") else "") for line in lines)
    server.notify("textDocument/didOpen", {"textDocument": {"uri": uri(path), "languageId": "kelvaro", "version": 1,
                                                            "text": text}})
    doc = text.split("\n")
    pick = random.Random(7)  # the same lines on every run
    me_lines = [i for i, line in enumerate(doc) if line == "  me."]
    word_lines = [i for i, line in enumerate(doc) if line.startswith("      total")]
    for n in range(300):
        line = pick.choice(me_lines)
        server.request("textDocument/completion", {"textDocument": {"uri": uri(path)},
                                                   "position": {"line": line, "character": 5}})
        line = pick.choice(word_lines)
        server.request("textDocument/definition", {"textDocument": {"uri": uri(path)},
                                                   "position": {"line": line, "character": 8}})
        server.request("textDocument/definition", {"textDocument": {"uri": uri(path)},
                                                   "position": {"line": line + 4, "character": 30}})

    # The project's memory once its check is ready (a check has run).
    server.notify("textDocument/didSave", {"textDocument": {"uri": uri(path)}})
    while server.read().get("method") != "textDocument/publishDiagnostics":
        pass
    project_peak = server.peak_kb()

    big_lines = open(big).read().count("\n")
    server.notify("textDocument/didOpen", {"textDocument": {"uri": uri(big), "languageId": "kelvaro", "version": 1,
                                                           "text": open(big).read()}})
    for n in range(300):
        at = {"line": pick.randrange(big_lines), "character": 2}
        server.notify("textDocument/didChange", {"textDocument": {"uri": uri(big), "version": n + 2},
                                                 "contentChanges": [{"range": {"start": at, "end": at}, "text": "x"}]})
    server.notify("textDocument/didClose", {"textDocument": {"uri": uri(big)}})

    one = os.path.join(project, "c8.NSObject.klvr")
    server.notify("textDocument/didOpen", {"textDocument": {"uri": uri(one), "languageId": "kelvaro", "version": 1,
                                                           "text": open(one).read()}})
    for n in range(5):
        # An error typed, then taken away again.
        at, end = {"line": 5, "character": 0}, {"line": 5 if n % 2 == 0 else 6, "character": 0}
        server.notify("textDocument/didChange", {"textDocument": {"uri": uri(one), "version": n + 2},
                                                 "contentChanges": [{"range": {"start": at, "end": end},
                                                                     "text": "  Next\n" if n % 2 == 0 else ""}]})
        while server.read().get("method") != "textDocument/publishDiagnostics":
            pass
    server.request("workspace/symbol", {"query": "x"})
    peak = server.peak_kb()
    times, cpu = server.finish()

    print(f"initialize (client side, {len(os.listdir(project))} files): {initialize_ms:.1f} ms "
          f"(server side {times['initialize'][0]:.1f} ms, CPU {cpu['initialize'][0]:.1f} ms: vocabulary {times['initialize/vocabulary'][0]:.1f} ms, "
          f"scans {times['initialize/scan'][0]:.1f} ms)")
    for method in ("textDocument/completion", "textDocument/definition", "textDocument/didChange", "diagnostics"):
        values, processor = times.get(method, [0]), cpu.get(method, [0])
        print(f"{method}: n={len(values)} wall p50 {percentile(values, 50):.3f} ms, p99 {percentile(values, 99):.3f} ms, "
              f"max {max(values):.3f} ms; CPU p50 {percentile(processor, 50):.3f} ms, "
              f"p99 {percentile(processor, 99):.3f} ms")
    print(f"peak memory (VmHWM): {project_peak / 1024:.1f} MB with the project and one document, "
          f"{peak / 1024:.1f} MB at the end")


if __name__ == "__main__":
    main()
