"""Types into the program given as argument, with main_application.py as the main application."""
import os
import re
import subprocess
import sys
import tempfile
import time

import main_application as wire

CASES = [("I saw teh cat. ", "I saw the cat. "), ("A mistke, teh\n", "A mistake, the\n")]
HELD_UP_CASES = [("teh teh, mistke it. ", r"t(eh|he) t(eh|he), mist(k|ak)e it\. "),
                 ("teh \b\b\b\bred teh ", "red t(eh|he) ")]
TRIES, LONGEST_PAUSE = 3, 50  # milliseconds; after a longer one a correction may be missing


def type_text(program, typed):
    """The document, and whether the main application was held up."""
    application = subprocess.Popen([sys.executable, wire.__file__], stdout=subprocess.PIPE)
    try:
        end = time.monotonic() + 60
        while not os.path.exists(wire.path("%d.process" % application.pid)):
            if application.poll() is not None or time.monotonic() > end:
                raise RuntimeError("the main application didn't announce itself")
            time.sleep(0.01)
        document = subprocess.run([program, "type", "--no-checker"], input=typed.encode(),
                                  stdout=subprocess.PIPE, check=True, timeout=60).stdout.decode()
        application.terminate()
        return document, int(application.communicate(timeout=60)[0]) > LONGEST_PAUSE
    finally:
        application.kill()
        application.wait()


def is_corrected(program, typed, expected):
    for _ in range(TRIES):
        document, held_up = type_text(program, typed)
        print("%r became %r%s" % (typed, document, ", held up" * held_up))
        if document == expected or not held_up:
            break
    return document == expected


def is_undamaged(program, typed, possible):
    document, _ = type_text(program, typed)
    print("%r became %r beside one that errs" % (typed, document))
    return re.fullmatch(possible, document) is not None


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as folder, tempfile.TemporaryDirectory() as data:
        os.environ["QUORVANE_DATA_DIR"] = data
        os.environ["QUORVANE_RUNTIME_DIR"] = folder
        os.environ["QUORVANE_KEY_OFFSET"] = str(0x20000000 + 32 * os.getpid())
        try:
            good = all([is_corrected(sys.argv[1], *case) for case in CASES])
            os.environ["GREEDY"] = "1"
            good &= is_undamaged(sys.argv[1], "I saw teh cat. ", r"I saw teh cat\. ")
            del os.environ["GREEDY"]
            os.environ["HELD_UP"] = "1"
            good &= all([is_undamaged(sys.argv[1], *case) for case in HELD_UP_CASES])
        finally:
            files = [name for name in os.listdir(folder) if not name.startswith(".")]  # locks stay
            left = [wire.remove_segments(), files]
        print("left behind: %d segments, files %s" % tuple(left))
    sys.exit(0 if good and left == [0, []] else 1)
