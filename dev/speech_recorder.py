#!/usr/bin/python3
"""Runs Orca with its speech written to a file instead of spoken: speech_recorder.py <file>

Each line of the file is one utterance as JSON: {"time": seconds, "said": text}. "said" is null where Orca interrupts what
it is saying. Keys that Orca echoes are left out: they depend on the settings of the user, not on the program.
"""

import json
import sys
import time

from orca import orca, speechdispatcherfactory, speechserver


class Recorder(speechserver.SpeechServer):
    """Takes the place of the server that speaks."""

    file = None
    server = None

    @staticmethod
    def getFactoryName():
        return "Recorder"

    @staticmethod
    def getSpeechServers():
        return [Recorder.getSpeechServer()]

    @staticmethod
    def getSpeechServer(info=None):
        if Recorder.server is None:
            Recorder.server = Recorder()
        return Recorder.server

    @staticmethod
    def shutdownActiveServers():
        pass

    def note(self, said):
        self.file.write(json.dumps({"time": time.time(), "said": said}) + "\n")
        self.file.flush()

    def speak(self, text=None, acss=None, interrupt=True):
        if text:
            self.note(text)

    def speakCharacter(self, character, acss=None):
        self.note(character)

    def speakKeyEvent(self, event, acss=None):
        pass

    def sayAll(self, utteranceIterator, progressCallback):
        for context, _ in utteranceIterator:
            self.note(context.utterance)

    def stop(self):
        self.note(None)

    def __getattr__(self, name):
        """Rates, pitches and styles: nothing to do."""
        if name.startswith("_"):
            raise AttributeError(name)
        return lambda *arguments, **named: None


def main():
    Recorder.file = open(sys.argv[1], "w", encoding="utf-8")
    sys.argv = sys.argv[:1]
    speechdispatcherfactory.SpeechServer = Recorder
    orca.getSettingsManager().activate(None, {"enableBraille": False, "enableSound": False})
    return orca.main()


if __name__ == "__main__":
    sys.exit(main())
