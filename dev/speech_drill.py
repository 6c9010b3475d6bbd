#!/usr/bin/env python3
"""Drills a course with the screen reader Orca and checks what is said: speech_drill.py <folder of programs> <protocol>

Run it by dev/speech.sh, which gives it a session bus of its own. The protocol has a line for each key and, below it, what
was said before the next one; "!" marks what should have been said and was not. What is said is only searched for the words
that matter: screen readers and their versions differ in the rest.
"""

import json
import os
import shutil
import subprocess
import sys
import tempfile
import time

RECORDS = {
    "the dog?": "der Hund",
    "the cat?": "die Katze",
    "the house?": "das Haus",
    "the tree?": "der Baum",
    "the flower?": "die Blume",
    "the book?": "das Buch",
    "the table?": "der Tisch",
    "the lamp?": "die Lampe",
    "the window?": "das Fenster",
    "the garden?": "der Garten",
    "the street?": "die Strasse",
    "the bread?": "das Brot",
    "the apple?": "der Apfel",
    "the pear?": "die Birne",
}

# Words by which a screen reader presents a kind of control. They do not belong to news, nor to the words of a hint.
UNWANTED = ["notification", "Announcement", "Prompt", "unselected"]

# How long it is silent, in seconds, before what was said counts as complete; and how long to wait for the first word.
SILENCE = 0.8
PATIENCE = 8.0
# How long it takes from one key to the next.
KEY = 0.2
# How long a program may take to start.
START = 30.0


class Heard:
    """Reads what the recorder has written."""

    def __init__(self, path):
        self.path = path
        self.offset = 0

    def new(self):
        """The utterances since the last call; None where Orca fell silent for a key."""
        if not os.path.exists(self.path):
            return []
        with open(self.path, encoding="utf-8") as file:
            file.seek(self.offset)
            text = file.read()
            end = text.rfind("\n") + 1
            self.offset += len(text[:end].encode())
        return [json.loads(line)["said"] for line in text[:end].splitlines()]

    def all(self, wanted, patience):
        """What is said until `wanted` has been said, or patience is over, and then silence."""
        begin = last = time.monotonic()
        said = []
        while True:
            new = [text for text in self.new() if text is not None]
            said += [" ".join(text.split()) for text in new]
            now = time.monotonic()
            if new:
                last = now
            complete = all(any(part in text for text in said) for part in wanted)
            if now - last > SILENCE and (complete or now - begin > patience):
                return said
            time.sleep(0.05)


class Session:
    """The program, the screen reader and a user."""

    def __init__(self, programs, protocol):
        self.programs = programs
        self.protocol = protocol
        self.home = tempfile.mkdtemp(prefix="cuedrill-speech-")
        self.processes = []
        self.missing = 0
        self.question = None
        self.said = []
        runtime = os.path.join(self.home, "runtime")
        os.mkdir(runtime, 0o700)
        self.environment = dict(
            os.environ,
            HOME=self.home,
            XDG_CONFIG_HOME=os.path.join(self.home, "config"),
            XDG_DATA_HOME=os.path.join(self.home, "data"),
            XDG_CACHE_HOME=os.path.join(self.home, "cache"),
            XDG_RUNTIME_DIR=runtime,
            QT_QPA_PLATFORM="xcb",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
            NO_AT_BRIDGE="1",
        )
        self.environment.pop("WAYLAND_DISPLAY", None)
        self.heard = Heard(os.path.join(self.home, "said"))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            process.terminate()
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        shutil.rmtree(self.home, ignore_errors=True)

    def start(self, *words, **options):
        process = subprocess.Popen(words, env=self.environment, stdout=sys.stderr, **options)
        self.processes.append(process)
        return process

    def start_display(self):
        ours, theirs = os.pipe()
        number = os.environ.get("CUEDRILL_SPEECH_DISPLAY")
        self.start("Xvfb", *([":" + number] if number else []), "-displayfd", str(theirs), "-screen", "0",
                   "1280x900x24", "-nolisten", "tcp", pass_fds=[theirs])
        os.close(theirs)
        with os.fdopen(ours) as pipe:
            self.environment["DISPLAY"] = ":" + pipe.readline().strip()
        self.start("openbox")

    def start_reader(self):
        with open(shutil.which("orca"), encoding="utf-8") as script:
            python = script.readline().removeprefix("#!").split()[0]
        recorder = os.path.join(os.path.dirname(os.path.abspath(__file__)), "speech_recorder.py")
        self.start(python, recorder, self.heard.path)
        self.listen("start of the screen reader", "Screen reader on", patience=START)

    def start_program(self):
        texts = os.path.join(self.home, "course.txt")
        course = os.path.join(self.home, "course.crs")
        with open(texts, "w", encoding="utf-8") as file:
            file.writelines(f"@Q@ {question}\n@A@ {answer}\n" for question, answer in RECORDS.items())
        subprocess.run([os.path.join(self.programs, "cuedrill-course"), course, texts], env=self.environment,
                       stdout=sys.stderr, check=True)
        self.start(os.path.join(self.programs, "cuedrill"), course)
        self.listen("start of the program", "Shall I ask you a question?", patience=START)

    def listen(self, action, *wanted, patience=PATIENCE):
        """Writes down what is said after an action, and what of `wanted` is not."""
        self.said = self.heard.all(wanted, patience if wanted else 0)
        self.protocol.write(action + "\n")
        for text in self.said:
            self.protocol.write("    " + text + "\n")
            for question in RECORDS:
                if question in text:
                    self.question = question
        for part in wanted:
            if not any(part in text for text in self.said):
                self.missing += 1
                self.protocol.write("  ! " + part + "\n")
        for text in self.said:
            for word in UNWANTED:
                if word in text:
                    self.missing += 1
                    self.protocol.write("  ! without the word " + word + "\n")
        self.protocol.flush()

    def send(self, *words):
        """Sends keys. The toolkit asks the screen reader about each key first, which takes time, as a hand does."""
        time.sleep(KEY)
        subprocess.run(["xdotool", *words], env=self.environment, check=True)

    def press(self, key, *wanted):
        modifier, plus, letter = key.partition("+")
        if plus:
            self.send("keydown", modifier)
            self.send("key", letter)
            self.send("keyup", modifier)
        else:
            self.send("key", key)
        self.listen(key, *wanted)

    def type(self, text):
        self.send("type", "--delay", "100", text)
        self.listen("type " + text)

    def answer(self):
        return RECORDS.get(self.question, "the answer to a question that was not said")

    def judged(self, key, *wanted):
        """A key that gives a verdict; the next question must be said, too."""
        before, self.question = self.question, None
        self.press(key, *wanted, "the ")
        if self.question is None:
            self.missing += 1
            self.protocol.write("  ! the next question\n")
            self.question = before

    def go_to_word(self, word):
        """Goes through the words of the hint until `word` is said."""
        self.press("Home")
        for _ in range(60):
            if any(text.rstrip(".") == word for text in self.said):
                return
            self.press("Right")
        self.missing += 1
        self.protocol.write("  ! the word " + word + "\n")


def drill(user):
    # 1: with the buttons
    user.press("space", "Do you want to see the answer?", "the ")
    user.press("space", "Answer: " + user.answer(), "Did you know the answer?")
    user.judged("space", "score of previous question increased", "Do you want to see the answer?")
    # 2: with keys, and keys that can do nothing
    user.press("q", "the ")
    user.press("plus", "Press A for the answer")
    user.press("a", "Answer: " + user.answer(), "Press '+' or '-'")
    user.press("Return", "Press + if you knew the answer, - if you did not.")
    user.judged("minus", "Not known. Level 0.")
    # 3: by heart again, then the words of a hint
    user.press("ctrl+r", "Question: " + user.question, "Press A for the answer")
    user.press("ctrl+l", "Level 0, 0 attempts", "The course has 14 questions")
    user.press("h", "Hint with ")
    user.press("Tab", "Hint")
    article, noun = user.answer().split()[:2]
    user.go_to_word(article)
    user.press("Return", "Right so far: " + article)
    user.go_to_word(noun)
    user.judged("Return", "Right.", "score of previous question increased")
    # 4: a hint that is closed again
    user.press("h", "Hint with ")
    user.press("Escape", "The hint is closed.")
    user.press("a", "Answer: " + user.answer())
    user.judged("plus", "score of previous question increased")
    # 5: a wrong answer, typed, with the shape of the right one
    user.press("t", "Answer")
    user.press("alt+h", f"Hint: 3 hidden, {len(user.answer()) - 4} hidden.")
    user.type("der Esel")
    user.press("ctrl+r", "You have typed: der Esel", "It counts as not known now.")
    user.press("Return", "Wrong answer", "The correct answer is")
    user.judged("Return", "Not known. Level 0.")
    # 6: a right answer, typed
    user.press("Escape")
    user.press("t", "Answer")
    user.type(user.answer())
    user.judged("Return", "Right.", "score of previous question increased")
    # 7 to 10
    user.press("Escape")
    for key, verdict in [("plus", "increased"), ("minus", "Not known."), ("plus", "increased"), ("plus", "increased")]:
        user.press("a", "Answer: " + user.answer())
        user.judged(key, verdict)


def use_the_rest(user):
    user.press("e", "Question", "You are changing this question.", "Saving starts this record's history again.")
    user.press("Tab", "Answer")
    user.press("End")
    user.type("!")
    user.press("ctrl+s", "Saved.")
    user.press("i", "New question.", "Type the question and its answer, then press Save.")
    user.press("Escape")

    user.press("alt+o", "Always let me type the answer", "not checked")
    user.press("Down", "Always show hints", "not checked")
    user.press("Return", "Always show hints: on.")
    user.press("alt+o", "Always let me type the answer", "not checked")
    user.press("Down", "Always show hints checked")
    user.press("Return", "Always show hints: off.")

    user.press("alt+l", "All questions ordered alphabetically")
    user.press("s")
    user.press("Tab")
    for _ in range(8):
        if any("the " in text for text in user.said):
            break
        user.press("Tab")
    user.press("Down", "the ")
    user.press("Down", "the ")
    user.press("Return", "the ")
    user.press("s", "The course has 14 questions")
    user.press("alt+l", "Questions with some identical words")
    user.press("s")
    user.press("Escape", "The list is closed.")
    user.press("Escape", "Cuedrill ends.")


def main():
    programs, protocol = sys.argv[1:]
    with open(protocol, "w", encoding="utf-8") as file, Session(os.path.abspath(programs), file) as user:
        user.start_display()
        user.start_reader()
        user.start_program()
        if not user.missing:
            drill(user)
            use_the_rest(user)
        if user.missing:
            print(f"{user.missing} things were not said as a user must hear them; see the lines with \"!\".",
                  file=sys.stderr)
        return 1 if user.missing else 0


if __name__ == "__main__":
    sys.exit(main())
