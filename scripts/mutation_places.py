"""The places of the library's sources where mutate.py can change one operator or number, and a file
of places that finds them again when lines have moved."""
import bisect
import dataclasses
import random
import re

from tried_changes import DEFINITION, ROOT

COMPARISONS = {"<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"),
               "==": ("!=",), "!=": ("==",)}
ARITHMETIC = {"+": ("-",), "-": ("+",), "*": ("/",), "/": ("*",),
              "+=": ("-=",), "-=": ("+=",), "*=": ("/=",), "/=": ("*=",)}
LOGICAL = {"&&": ("||",), "||": ("&&",)}
EXTREMES = {"min": ("max",), "max": ("min",), "fmin": ("fmax",), "fmax": ("fmin",),
            "min_element": ("max_element",), "max_element": ("min_element",)}
SIDES = {a: (b,) for pair in (("start", "end"), ("min", "max"), ("low", "high"), ("x", "y"))
         for a, b in (pair, pair[::-1])}
ZERO = re.compile(r"0(\.0*)?[uUlL]*$")


def number_ways(number):
    return (f"({number} + 1)",) if ZERO.match(number) else (f"(2 * {number})", f"({number} + 1)")


# kind, what is matched, what may stand there instead. The formatter puts blanks around operators
# with two sides, and around nothing else that looks like one.
KINDS = (
    ("arithmetic", re.compile(r"(?<=\s)[-+*/]=?(?=\s)"), ARITHMETIC.get),
    ("comparison", re.compile(r"(?<=\s)(?:[<>]=?|[=!]=)(?=\s)"), COMPARISONS.get),
    ("logical", re.compile(r"(?<=\s)(?:&&|\|\|)(?=\s)"), LOGICAL.get),
    ("sign", re.compile(r"(?<![\w-])-(?=[\w(*.])|!(?=[\w(*:])"), lambda _: ("",)),
    ("number", re.compile(r"(?<![\w.])(?:0[xX][0-9a-fA-F.]+(?:[pP][-+]?\d+)?|"
                          r"\d[\d']*(?:\.\d*)?(?:[eE][-+]?\d+)?)[uUlL]*(?!\w)"), number_ways),
    ("extreme", re.compile(r"(?<=std::)f?(?:min|max)(?:_element)?(?=\()"), EXTREMES.get),
    ("side", re.compile(r"(?<=\w\.)(?:start|end|min|max|low|high|x|y)\b(?!\()"), SIDES.get),
)

# What is no code to change: comments, texts, directives, assertions, named constants (the affair of
# pin_constants.py), sizes of arrays that are declared, names of operators.
NO_CODE = (
    re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|(?<![\w])\'(?:\\.|[^\'\\\n])\'', re.S),
    re.compile(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", re.M),
    re.compile(r"\b(?:static_)?assert\([^;]*;"),
    re.compile(DEFINITION.pattern),
    re.compile(r"\boperator *[^\s\w(]+"),
    re.compile(r"(?<![\w.])(?!return\b|case\b|else\b)[A-Za-z_][\w:]*[>&*]* +"
               r"\w+(?:\[[^\]]*\])+(?= *[;{,=])"),
)
OPENS_BRACKET = re.compile(r"(?:template |(?<=[\w\]]))<(?![<=\s])")
NO_FUNCTION = re.compile(r"\s*(?:template[\s_]*)?(?:inline\s+)?"
                         r"(?:namespace|struct|class|enum|union|extern *$)(?!\w)")
CONSTRUCTOR = re.compile(r"\)\s*(?:noexcept\s*)?:(?!:)")


@dataclasses.dataclass
class Place:
    path: str  # below the root
    line: int
    column: int  # behind the indentation, both from 1
    kind: str
    old: str
    new: str
    text: str  # of the line, without indentation

    def where(self):
        return f"{self.path}:{self.line}"

    def change(self):
        return f"{self.old} -> {self.new or 'nothing'}"

    def row(self):
        return "\t".join((f"{self.path}:{self.line}:{self.column}", self.kind, self.old, self.new,
                          self.text))


def blanked(text):
    """The text with blanks for what is no code and with _ for template brackets."""
    for pattern in NO_CODE:
        text = pattern.sub(lambda found: re.sub(r"[^\n]", " ", found[0]), text)
    for found in reversed(list(OPENS_BRACKET.finditer(text))):
        depth, end = 1, found.end()
        while depth and end < len(text) and text[end] not in ";{}":
            depth += {"<": 1, ">": -1}.get(text[end], 0)
            end += 1
        if not depth:
            bracket = re.sub(r"[^\n]", "_", text[found.end() - 1:end])
            text = text[:found.end() - 1] + bracket + text[end:]
    return text


def code_ranges(text):
    """Where the bodies of functions and the values of tables are, in blanked text."""
    depth, code_depth, head, start = 0, 0, 0, 0
    for found in re.finditer(r"[{};]", text):
        at = found.start()
        if found[0] == "{":
            depth += 1
            before = text[head:at]
            if not code_depth and not NO_FUNCTION.match(before):
                members = CONSTRUCTOR.search(before)
                code_depth, start = depth, head + members.end() if members else at
        elif found[0] == "}":
            if depth == code_depth:
                yield start, at
                code_depth = 0
            depth -= 1
        head = at + 1


def places_of(path, rng):
    """All places of a file in their order, each with one of its changes."""
    text = (ROOT / path).read_text()
    code = blanked(text)
    lines = [0] + [found.end() for found in re.finditer("\n", text)]
    found = []
    for start, end in code_ranges(code):
        for kind, pattern, ways in KINDS:
            found += [(hit.start(), kind, hit[0], ways(hit[0]))
                      for hit in pattern.finditer(code, start, end)]
    for at, kind, old, ways in sorted(found):
        if not ways:
            continue
        line = bisect.bisect(lines, at)
        whole = text[lines[line - 1]:].split("\n", 1)[0]
        indent = len(whole) - len(whole.lstrip())
        yield Place(path, line, at - lines[line - 1] - indent + 1, kind, old, rng.choice(ways),
                    whole.strip())


def sources():
    return [str(path.relative_to(ROOT)) for path in sorted((ROOT / "src").rglob("*"))
            if path.suffix in (".h", ".cpp")]


def chosen_places(seed, count, words):
    """So many places of the files whose path holds one of the words, drawn without regard to kind
    or file; a longer list begins with the shorter one."""
    rng = random.Random(seed)
    places = [place for path in sources() for place in places_of(path, rng)]
    rng.shuffle(places)
    return [p for p in places if not words or any(word in p.path for word in words)][:count]


def read_places(file):
    """(places found again, rows of places that are gone). A line that has moved is known by its
    text: the nearest such line of its file, else the first in another file."""
    lines_of = {path: [line.strip() for line in (ROOT / path).read_text().split("\n")]
                for path in sources()}
    found, gone = [], []
    for row in file.read_text().splitlines():
        where, kind, old, new, text = row.split("\t")
        path, line, column = where.rsplit(":", 2)
        line, column = int(line), int(column)
        same = [n + 1 for n, other in enumerate(lines_of.get(path, ())) if other == text]
        if not same:
            path = next((p for p, lines in lines_of.items() if text in lines), None)
            same = [lines_of[path].index(text) + 1] if path else []
        if same:
            nearest = min(same, key=lambda n: abs(n - line))
            found.append(Place(path, nearest, column, kind, old, new, text))
        else:
            gone.append(row)
    return found, gone


def changed_text(place, root):
    lines = (root / place.path).read_text().split("\n")
    line = lines[place.line - 1]
    at = len(line) - len(line.lstrip()) + place.column - 1
    assert line[at:].startswith(place.old), place
    lines[place.line - 1] = line[:at] + place.new + line[at + len(place.old):]
    return "\n".join(lines)
