# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Plants faults in the sources, one at a time, and reports which of them the tests catch.

Started by tests/mutants.sh, where its usage stands. A fault is named after its folder and its
number among those drawn there, as in "analysis:7": the same seed and sources give the same.
"""
import argparse, concurrent.futures, difflib, hashlib, json, os, pathlib, random, re
import resource, shutil, signal, subprocess, sys, tempfile, threading, time

ROOT = pathlib.Path(__file__).resolve().parent.parent
# Folders by what they stand on, lowest first; the tests of each lie below tests/.
FOLDERS = ["expr", "model", "io", "analysis", "batch", "app", "app/window"]
# For each folder, those of tests/ that can notice its faults, nearest first.
NEAREST = {"expr": ["expr", "model", "analysis", "app"], "model": ["model", "expr", "analysis", "app"],
           "io": ["io", "analysis", "app"], "analysis": ["analysis", "app"],
           "batch": ["batch", "app"]}
COUNTED = ("drawn", "caught", "survived", "dropped")
# No test links the one, and only the thread sanitizer the other.
LEFT_OUT = {"app/main.cpp", "model/poolorder.cpp"}

# Comments, strings, characters, the preprocessor's lines, and what reports to developers.
SKIPPED = re.compile(
    r"//[^\n]*|/\*.*?\*/|\"(?:\\.|[^\"\\\n])*\"|(?<![\w'])'(?:\\.|[^'\\\n])+'"
    r"|^[ \t]*#(?:\\\n|.)*?$|\b(?:qDebug|qWarning|Q_ASSERT|static_assert)\b[^;]*;", re.S | re.M)
EXCHANGED = {
    "comparison": {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="},
    "logic": {"&&": "||", "||": "&&"},
    "arithmetic": {"+": "-", "-": "+", "*": "/", "/": "*", "%": "/", "+=": "-=", "-=": "+="},
}
WORDS = {"true": "false", "false": "true", "qMin": "qMax", "qMax": "qMin", "first": "last",
         "last": "first", "break": "continue", "continue": "break"}
NO_STATEMENT = re.compile(
    r"(?:return|break|continue|if|for|while|do|switch|else|case|default|using|namespace|class"
    r"|struct|enum|template|typedef|friend|public|private|protected|explicit|Q_OBJECT)\b")
# With the name; without it what comes after would not compile.
DECLARATION = re.compile(
    r"(?:const |constexpr |static )*[\w:]+(?:<[^;=]*>)?[ *&]+(\w+)(?: =|[;({\[])")


class Source:
    """A file and what can be changed in it: (first, end, text instead, kind), by line."""

    def __init__(self, name, enumerators):
        self.name = name
        self.text = (ROOT / name).read_text()
        # Comments become blank, of strings only quotes are left; places stay.
        self.code = SKIPPED.sub(
            lambda m: re.sub(r"[^\n]", '"' if m[0][0] in "\"'" else " ", m[0]), self.text)
        self.pairs, self.within = {}, []
        opened = []
        for place, letter in enumerate(self.code):
            if letter in ")]}" and opened:
                self.pairs[opened.pop()] = place
            self.within.append(opened[-1] if opened else -1)
            if letter in "([{":
                opened.append(place)
        self.changes = {}
        self.find(enumerators)

    def add(self, first, end, text, kind):
        if self.text[first:end] != text:
            line = self.text.count("\n", 0, first) + 1
            self.changes.setdefault(line, []).append((first, end, text, kind))

    def find(self, enumerators):
        for kind, table in EXCHANGED.items():
            for m in re.finditer(r"(?<=\s)([<>=!&|+*/%-]{1,2})(?=\s)", self.code):
                isText = '"' in (self.code[m.start() - 2], self.code[m.end() + 1])
                if m[1] in table and not (isText and kind == "arithmetic"):
                    self.add(m.start(1), m.end(1), table[m[1]], kind)
        for m in re.finditer(r"\b(" + "|".join(WORDS) + r")\b", self.code):
            if m[1] not in ("first", "last") or self.code[m.end()] == "(":
                self.add(m.start(), m.end(), WORDS[m[1]], "word")
        for m in re.finditer(r"(?<![\w.'])\d[\d']*(\.\d+)?(e-?\d+)?(?![\w.'])", self.code):
            self.add(m.start(), m.end(), "(" + m[0] + " + 1)" if m[1] or m[2]
                     else str(int(m[0].replace("'", "")) + 1), "constant")
        for m in re.finditer(r"\b(?:if|while) (?=\()", self.code):
            first, end = m.end() + 1, self.pairs[m.end()]
            self.add(first, end, "!(" + self.text[first:end] + ")", "condition")
        for m in re.finditer(r"(?<![\w)])!(?=[\w(])", self.code):
            self.add(m.start(), m.end(), "", "negation")
        for m in re.finditer(r"\b(\w+)::(\w+)\b", self.code):
            isCase = self.code[:m.start()].endswith("case ")
            for names in [] if isCase else enumerators.get(m[2], []):
                other = names[(names.index(m[2]) + 1) % len(names)]
                self.add(m.start(2), m.end(2), other, "enumerator")
        for m in re.finditer(r"\breturn ([^;{]+);", self.code):
            first, end = m.span(1)
            self.add(first, end, "{}", "return value")
            self.add(first, end, "!(" + self.text[first:end] + ")", "return value")
        for m in re.finditer(r" \? ", self.code):
            self.exchange_parts(m.end(), self.within[m.start()], " : ", "choice")
        for opening, closing in self.pairs.items():
            if self.code[opening] == "{" or self.is_in_function(opening):
                self.exchange_parts(opening + 1, opening, ",", "arguments")
        for m in re.finditer(r"(?:[;{}]|\bcase [\w:]+:|\bdefault:)\s+(?=[\w*+(])", self.code):
            if self.is_in_function(m.end()):
                self.delete_statement(m.end())

    def is_in_function(self, place):
        while (place := self.within[place]) >= 0:
            if re.search(r"(?:\)|\bconst|override)\s*$", self.code[max(0, place - 40):place]):
                return self.code[place] == "{"
        return False

    def exchange_parts(self, first, opening, separator, kind):
        """Exchanges neighbours between a bracket and its end, or a semicolon."""
        starts, closing = [first], self.pairs.get(opening, len(self.code))
        for place in range(first, closing + 1):
            here = place < closing and self.within[place] == opening
            if place == closing or (here and self.code[place] == ";"):
                starts.append(place + len(separator))
                break
            if here and self.code.startswith(separator, place):
                starts.append(place + len(separator))
        if self.code[starts[-1] - len(separator)] == ";" and kind == "arguments":
            return
        for a, b, c in zip(starts, starts[1:], starts[2:]):
            left, right = self.text[a:b - len(separator)], self.text[b:c - len(separator)]
            if left.strip() and right.strip():
                new = right.strip() + self.text[b - len(separator):b] + " " + left.strip()
                self.add(a, c - len(separator), new.replace("\n", " "), kind)

    def delete_statement(self, first):
        level = self.within[first]
        if NO_STATEMENT.match(self.code, first) or self.code[level] != "{":
            return
        for end in range(first, len(self.code)):
            if self.within[end] == level and self.code[end] in ";{}":
                declared = DECLARATION.match(self.code, first)
                if self.code[end] == ";" and not (declared and re.search(
                        rf"\b{declared[1]}\b", self.code[end:self.pairs.get(level)])):
                    self.add(first, end, "", "statement")
                if self.code[end] != "{" or self.code[:end].rstrip()[-1] not in "=,":
                    return


def product_sources(folder):
    inner = [f for f in FOLDERS if f.startswith(folder + "/")]
    for path in sorted((ROOT / folder).rglob("*")):
        name = str(path.relative_to(ROOT))
        if path.suffix in (".cpp", ".h") and name not in LEFT_OUT \
                and not any(name.startswith(f + "/") for f in inner):
            yield name


def all_enumerators():
    """Of every enumeration of the product, by each of its names."""
    found = {}
    for name in (n for folder in FOLDERS for n in product_sources(folder)):
        code = SKIPPED.sub("", (ROOT / name).read_text())
        for m in re.finditer(r"\benum (?:class )?\w*[^{;]*\{([^}]*)\}", code):
            names = re.findall(r"(\w+)(?: = [^,]*)?(?:,|\s*$)", m[1])
            for each in names:
                found.setdefault(each, []).append(names)
    return found


class Fault:
    def __init__(self, folder, number, source, change):
        self.folder, self.name, self.source = folder, f"{folder}:{number}", source
        first, end, text, self.kind = change
        self.line = source.text.count("\n", 0, first) + 1
        old = source.text
        # As many lines as before: messages name them.
        missing = old.count("\n", first, end) - text.count("\n")
        self.text = old[:first] + text + "\n" * missing + old[end:]

    def diff(self):
        lines = difflib.unified_diff(self.source.text.splitlines(), self.text.splitlines(),
                                     self.source.name, self.source.name, lineterm="", n=2)
        return "\n".join(lines) + "\n"


def draw(seed):
    """All faults in the order in which they are drawn, and the lines of code, by folder:
    first a line, then one of the changes it allows."""
    enumerators, drawn, sizes = all_enumerators(), {}, {}
    for folder in FOLDERS:
        sources = [Source(name, enumerators) for name in product_sources(folder)]
        lines = [(source, line) for source in sources for line in sorted(source.changes)]
        sizes[folder] = len(lines)
        dice = random.Random(f"{seed} {folder}")
        dice.shuffle(lines)
        drawn[folder] = [Fault(folder, number, source, dice.choice(source.changes[line]))
                         for number, (source, line) in enumerate(lines, 1)]
    return drawn, sizes


class Workshop:
    """A copy of the sources and its build, in which faults are planted one after another."""

    def __init__(self, place):
        self.place, self.source, self.build = place, place / "source", place / "build"
        self.tests, self.environment = [], {}

    def run(self, command, **options):
        return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **options)

    def set_up(self, jobs):
        names = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT,
                               check=True, stdout=subprocess.PIPE, text=True).stdout.splitlines()
        names = [name for name in names if (ROOT / name).is_file()]
        for path in [p for p in self.source.rglob("*") if p.is_file()]:
            if str(path.relative_to(self.source)) not in names:
                path.unlink()
        for name in names:
            target = self.source / name
            if not target.exists() or target.read_bytes() != (ROOT / name).read_bytes():
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(ROOT / name, target)
        launcher = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
        for command in (["cmake", "-G", "Ninja", "-S", self.source, "-B", self.build,
                         "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -g0",
                         "-DBUILD_SHARED_LIBS=ON", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON",
                         "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
                         "-DVELMORA_BUILD_BENCHMARKS=OFF", *launcher], self.ninja(jobs)):
            done = self.run(command, env=self.compiling())
            if done.returncode != 0:
                sys.exit(done.stdout.decode())
        self.original = self.built()
        listed = self.run(["ctest", "--show-only=json-v1"], cwd=self.build).stdout
        for test in json.loads(listed)["tests"]:
            properties = {p["name"]: p["value"] for p in test["properties"]}
            environment = dict(v.split("=", 1) for v in properties["ENVIRONMENT"])
            folder = re.search(r"/build/tests/(\w+)/", test["command"][0])
            self.tests.append({"name": test["name"], "command": test["command"], "seconds": 0.0,
                               "folder": folder[1] if folder else "tour",
                               "cwd": properties["WORKING_DIRECTORY"], "environment": environment})
        for test in self.tests:
            start = time.monotonic()
            if self.fails(test, 300):
                sys.exit(f"{test['name']} fails without any fault planted")
            test["seconds"] = time.monotonic() - start

    def compiling(self):
        return {**os.environ, "CCACHE_BASEDIR": str(self.place), "CCACHE_NOHASHDIR": "1"}

    def ninja(self, jobs=1):
        return ["cmake", "--build", self.build, "--parallel", str(jobs)]

    def built(self):
        """What the libraries and programs are made of, as a number."""
        total = hashlib.sha1()
        for path in sorted(p for p in self.build.rglob("*") if p.is_file()):
            if path.suffix == ".so" or path.name.startswith(("tst_", "velmora-tour", "velmora-batch")):
                if os.access(path, os.X_OK):
                    total.update(path.read_bytes())
        return total.hexdigest()

    def fails(self, test, limit):
        """Whether the test fails, or takes longer than so many seconds."""
        def restrict():
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
            resource.setrlimit(resource.RLIMIT_AS, (8 << 30, 8 << 30))
        with tempfile.TemporaryDirectory(dir=self.place) as temporary:
            process = subprocess.Popen(
                test["command"], cwd=test["cwd"], stdin=subprocess.DEVNULL, preexec_fn=restrict,
                env={**os.environ, **test["environment"], "TMPDIR": temporary,
                     "QTEST_DISABLE_STACK_DUMP": "1", "QTEST_DISABLE_CORE_DUMP": "1"},
                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)
            try:
                return process.wait(limit) != 0
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
                return True

    def judge(self, fault):
        """What becomes of a fault: "caught by" a test, "survived", or it is none."""
        path = self.source / fault.source.name
        path.write_text(fault.text)
        try:
            if self.run(self.ninja(), env=self.compiling()).returncode != 0:
                return "does not compile"
            if self.built() == self.original:
                return "no other code"
            near = NEAREST.get(fault.folder, ["app"]) + ["tour"]
            # The tour first among its tests, as the others read what it wrote.
            for test in sorted((t for t in self.tests if t["folder"] in near), key=lambda t: (
                    near.index(t["folder"]), t["folder"] != "tour" and t["seconds"])):
                if self.fails(test, 20 + 10 * test["seconds"]):
                    return "caught by " + test["name"]
            return "no other code" if self.is_same_optimised(fault) else "survived"
        finally:
            path.write_text(fault.source.text)

    def is_same_optimised(self, fault):
        """Whether the optimiser takes both for the same program."""
        path, objects = self.source / fault.source.name, []
        for entry in json.loads((self.build / "compile_commands.json").read_text()):
            if entry["file"] == str(path):
                for text in (fault.source.text, fault.text):
                    path.write_text(text)
                    target = self.place / "optimised.o"
                    command = re.sub(r" -o \S+", f" -o {target}", entry["command"])
                    self.run(command.replace(" -O0 ", " -O2 "), shell=True, cwd=entry["directory"])
                    objects.append(target.read_bytes())
                return objects[0] == objects[1]
        return False


class Trial:
    """Which faults are drawn next, and what became of them."""

    def __init__(self, drawn, quotas, chosen, report):
        self.drawn, self.report, self.lock = drawn, report, threading.Lock()
        self.next = dict.fromkeys(FOLDERS, 0)
        self.left, self.chosen = dict(quotas), chosen
        self.counts = {folder: dict.fromkeys(COUNTED, 0)
                       for folder in FOLDERS}

    def take(self):
        with self.lock:
            if self.chosen is not None:
                return self.chosen.pop(0) if self.chosen else None
            folder = max(FOLDERS, key=lambda f: self.left[f])
            if self.left[folder] <= 0 or self.next[folder] >= len(self.drawn[folder]):
                return None
            self.left[folder] -= 1
            self.next[folder] += 1
            return self.drawn[folder][self.next[folder] - 1]

    def enter(self, fault, outcome, seconds):
        with self.lock:
            counts = self.counts[fault.folder]
            if outcome in ("does not compile", "no other code"):
                counts["dropped"] += 1
                self.left[fault.folder] += 1
            else:
                counts["drawn"] += 1
                counts["survived" if outcome == "survived" else "caught"] += 1
            head = f"{fault.name:16} {outcome:32} {fault.source.name}:{fault.line} {fault.kind}"
            print(f"{head} ({seconds:.0f} s)", flush=True)
            if outcome == "survived":
                with self.report.open("a") as out:
                    out.write(f"{fault.name} {fault.kind}\n{fault.diff()}\n")

    def work(self, shop):
        while (fault := self.take()) is not None:
            start = time.monotonic()
            outcome = shop.judge(fault)
            self.enter(fault, outcome, time.monotonic() - start)

    def table(self):
        print("\n| folder |", " | ".join(COUNTED), "|\n" + "|---" * (len(COUNTED) + 1) + "|")
        for folder in FOLDERS:
            c = self.counts[folder]
            if c["drawn"] + c["dropped"] > 0:
                print(f"| `{folder}/` |", " | ".join(str(c[name]) for name in COUNTED), "|")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=100)
    parser.add_argument("--folder", choices=FOLDERS, action="append")
    parser.add_argument("--only", nargs="+", default=[])
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    options = parser.parse_args()
    drawn, sizes = draw(options.seed)
    folders = options.folder or FOLDERS
    chosen = [f for folder in FOLDERS for f in drawn[folder] if f.name in options.only]
    total, quotas, given = sum(sizes[f] for f in folders), dict.fromkeys(FOLDERS, 0), 0
    for place, folder in enumerate(folders):
        lines = sum(sizes[f] for f in folders[:place + 1])
        quotas[folder] = round(options.count * lines / total) - given
        given += quotas[folder]
    if options.list:
        for fault in chosen or [f for folder in folders for f in drawn[folder][:quotas[folder]]]:
            print(f"{fault.name} {fault.kind}\n{fault.diff()}")
        return
    place = ROOT / "build" / "mutants"
    place.mkdir(parents=True, exist_ok=True)
    report = place / "survivors.diff"
    report.write_text("")
    trial = Trial(drawn, quotas, chosen if options.only else None, report)
    shops = [Workshop(place / str(n)) for n in range(options.jobs)]
    for shop in shops:
        shop.set_up(options.jobs)
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for done in [pool.submit(trial.work, shop) for shop in shops]:
            done.result()
    trial.table()
    print(f"\nThe survivors are in {report.relative_to(ROOT)}.")


if __name__ == "__main__":
    main()
