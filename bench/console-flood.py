#!/usr/bin/env python3
"""Floods the console of build/dravik with requests and tells what becomes of the rest.

    bench/console-flood.py [BUILD-FOLDER]

1. 100,000 lines that stand ready at the start: how long until the last answer.
2. Live requests for each second against the virtual vehicle, without requests to the console and
   with an endless stream of them, for several kinds; beside it the memory that the program takes
   and how soon SIGTERM ends it. The last of them floods a program whose answers nobody reads.
"""

import os
import signal
import subprocess
import sys
import tempfile
import threading
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.abspath(sys.argv[1]) if len(sys.argv) > 1 else os.path.join(ROOT, "build")
LINES = 100_000
LINES_BAR = 3.0  # seconds
RATE_BAR = 0.9
END_BAR = 1.0  # seconds
SETTLE = 12.0  # seconds: the start, the connect, and what the console allows at once
MEASURE = 10.0
REQUEST_BYTES = 5  # "010C" and a carriage return
FLOODS = ["text obd_status", "state", "elements", "do openmenu_engine", "bogus", "", "x" * 100_000]


def start(folder, **streams):
    environment = {"QT_QPA_PLATFORM": "offscreen", **os.environ}
    return subprocess.Popen(
        [BUILD + "/dravik", "--folder", folder, "--windowed", "800x480", "--console"],
        stdin=subprocess.PIPE, stderr=subprocess.DEVNULL, env=environment, **streams)


def program_folder(path, port):
    for name in ("skins", "languages"):
        os.symlink(os.path.join(ROOT, name), os.path.join(path, name))
    with open(os.path.join(path, "Dravik.ini"), "w", encoding="ascii") as settings:
        settings.write("[Options]\nSkin=night\nLanguage=English\nMisc=6\n"
                       f"[OBD]\nComPort=1\nUpdateIntervall=1\n[Ports]\nCOM1={port}\n"
                       "[Resume]\nMenu=dashboard\n")
    return path


def send(stream, text):
    try:
        stream.write(text)
        stream.close()
    except BrokenPipeError:
        pass


def many_lines(folder):
    program = start(folder, stdout=subprocess.PIPE)
    begin = time.monotonic()
    lines = b"text obd_status\n" * LINES
    threading.Thread(target=send, args=(program.stdin, lines), daemon=True).start()
    answers = sum(1 for _ in program.stdout)
    spent = time.monotonic() - begin
    status = program.wait()
    good = answers == LINES and spent <= LINES_BAR and status == 0
    print(f"{LINES} lines at the start: {answers} answers after {spent:.2f} s, status {status}"
          f"{'' if good else '   ABOVE THE BAR'}")
    return good


def bytes_read(process):
    with open(f"/proc/{process.pid}/io", encoding="ascii") as file:
        return int(file.readline().split()[1])


def resident(process):
    with open(f"/proc/{process.pid}/statm", encoding="ascii") as file:
        return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE") / 1e6


def flooded(folder, vehicle, request, reads=True):
    """Live requests for each second, megabytes and seconds to the end under a flood of a request."""
    program = start(folder, stdout=subprocess.PIPE)
    line = (request or "") + "\n"
    flood = line.encode() * (1 + 65536 // len(line))

    def write():
        try:
            program.stdin.write(b"do openmenu_dashboard\n")
            program.stdin.flush()
            while request is not None:
                program.stdin.write(flood)
        except (BrokenPipeError, ValueError):
            pass

    threads = [threading.Thread(target=write, daemon=True)]
    if reads:
        drain = ["dd", "of=/dev/null", "bs=64k", "status=none"]
        sink = subprocess.Popen(drain, stdin=program.stdout)
        program.stdout.close()
    for thread in threads:
        thread.start()
    time.sleep(SETTLE)
    before = bytes_read(vehicle)
    time.sleep(MEASURE)
    rate = (bytes_read(vehicle) - before) / REQUEST_BYTES / MEASURE
    memory = resident(program)
    begin = time.monotonic()
    program.send_signal(signal.SIGTERM)
    status = program.wait()
    end = time.monotonic() - begin
    if reads:
        sink.wait()
    return rate, memory, end, status


def main():
    with tempfile.TemporaryDirectory() as path:
        port = os.path.join(path, "port")
        vehicle = subprocess.Popen([BUILD + "/dravik-vehicle", "--link", port],
                                   stdout=subprocess.DEVNULL)
        time.sleep(0.5)
        folder = program_folder(path, port)
        good = many_lines(folder)
        calm = None
        rows = [(None, True)] + [(request, True) for request in FLOODS] + [("state", False)]
        for request, reads in rows:
            rate, memory, end, status = flooded(folder, vehicle, request, reads)
            calm = calm or rate
            fine = rate >= RATE_BAR * calm and end <= END_BAR and status == 0
            good = good and fine
            name = "no requests" if request is None else f"\"{request[:20]}\""
            print(f"{name + ('' if reads else ', unread'):26} {rate:6.1f} live requests/s "
                  f"({rate / calm:4.0%}), {memory:5.1f} MB, end after {end:.2f} s, "
                  f"status {status}{'' if fine else '   ABOVE THE BAR'}", flush=True)
        vehicle.terminate()
        vehicle.wait()
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
