"""A main application that makes capitals of each word, so that a text tells what was typed."""
import os
import signal
import sys

sys.path.append(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "wire"))
import main_application as wire


class Capitals:
    def __contains__(self, word):
        return word.islower()

    def __getitem__(self, word):
        return word.upper()


wire.CORRECTIONS, wire.SECONDS_TO_LIVE = Capitals(), 3600
main_application = wire.MainApplication()
signal.signal(signal.SIGTERM, main_application.end)
main_application.run()
main_application.close()
