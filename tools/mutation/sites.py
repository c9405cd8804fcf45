"""Finds the places of the sources that a mutant can change, with clang's own reading of C++.

A site is one place with one or several mutants. How the text is changed so that all of them are compiled in at once is in
SITE's `prefix`, `suffix` and `operator`, which hold {0}, {1}, ... where the ids of the mutants go. Offsets are bytes.
"""
import dataclasses
import json
import os
import re
import shlex

from clang.cindex import Config, CursorKind as K, Index, StorageClass, TranslationUnit, TypeKind

if not Config.loaded and os.path.exists("/usr/lib/llvm-14/lib/libclang-14.so.1"):
    Config.set_library_file("/usr/lib/llvm-14/lib/libclang-14.so.1")


@dataclasses.dataclass
class Site:
    file: str
    start: int
    end: int
    kind: str
    mutants: list  # what each mutant makes of the place, in words
    prefix: str
    suffix: str
    operator: tuple = None  # (start, end, text) of an operator that is written over
    line: int = 0
    function: str = ""
    text: str = ""
    once: bool = False  # evaluated by the first call of its function only


COMPARISONS = {"<": ("less", "<=", ">="), "<=": ("lessOrEqual", "<", ">"),
               ">": ("greater", ">=", "<="), ">=": ("greaterOrEqual", ">", "<")}
EQUALITIES = {"==": ("equal", "!="), "!=": ("unequal", "==")}
ARITHMETIC = {"+": ("plus", "-"), "-": ("difference", "+"), "*": ("product", "/"), "/": ("quotient", "*"),
              "%": ("remainder", "*"), "&": ("bitAnd", "|"), "|": ("bitOr", "&")}
ASSIGNMENTS = {"+=": ("addTo", "-="), "-=": ("takeFrom", "+="), "|=": ("setBits", "&="), "&=": ("keepBits", "|=")}

FUNCTIONS = {K.FUNCTION_DECL, K.CXX_METHOD, K.CONSTRUCTOR, K.DESTRUCTOR, K.CONVERSION_FUNCTION, K.FUNCTION_TEMPLATE}
STATEMENT_LISTS = {K.COMPOUND_STMT, K.IF_STMT, K.FOR_STMT, K.WHILE_STMT, K.DO_STMT, K.CXX_FOR_RANGE_STMT, K.CASE_STMT,
                   K.DEFAULT_STMT}
INTEGERS = {TypeKind.INT, TypeKind.UINT, TypeKind.LONG, TypeKind.ULONG, TypeKind.LONGLONG, TypeKind.ULONGLONG,
            TypeKind.SHORT, TypeKind.USHORT, TypeKind.CHAR_S, TypeKind.UCHAR, TypeKind.SCHAR, TypeKind.CHAR_U}
NUMBERS = INTEGERS | {TypeKind.DOUBLE, TypeKind.FLOAT}
# Named constants that can be replaced by a neighbour.
NAMED = INTEGERS | {TypeKind.ENUM, TypeKind.BOOL, TypeKind.DOUBLE}


class Finder:
    """Collects the sites of all sources under `root`; a header is read with the first source that includes it."""

    def __init__(self, root):
        self.root = os.path.realpath(root)
        self.sites = {}
        self.texts = {}
        self._done = set()
        self._ours = {}

    def read(self, source, arguments):
        unit = Index.create().parse(source, args=arguments,
                                    options=TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD)
        # Errors that only clang makes of what gcc takes leave the rest readable; what is missing altogether does not.
        errors = [d for d in unit.diagnostics if d.severity >= 4]
        if errors:
            raise RuntimeError("clang does not read %s: %s" % (source, errors[0]))
        self._macros = {}
        fresh = set()
        for cursor in unit.cursor.get_children():
            file = self._file(cursor)
            if file is None or file in self._done:
                continue
            fresh.add(file)
            if file not in self.texts:
                with open(file, "rb") as stream:
                    self.texts[file] = stream.read()
            if cursor.kind == K.MACRO_INSTANTIATION:
                extent = cursor.extent
                self._macros.setdefault(file, {})[(extent.start.offset, extent.end.offset)] = cursor.spelling
        for cursor in unit.cursor.get_children():
            file = self._file(cursor)
            if file in fresh and cursor.kind not in (K.MACRO_INSTANTIATION, K.MACRO_DEFINITION, K.INCLUSION_DIRECTIVE):
                self._walk(cursor, None, Context())
        self._done |= fresh

    def all(self):
        return sorted(self.sites.values(), key=lambda s: (s.file, s.start, -s.end, s.kind))

    # --- walking

    def _file(self, cursor):
        file = cursor.location.file
        if file is None:
            return None
        name = file.name
        if name not in self._ours:
            path = os.path.realpath(name)
            self._ours[name] = path if path.startswith(self.root + os.sep) else None
        return self._ours[name]

    def _walk(self, cursor, parent, context):
        file = self._file(cursor)
        if file is None:
            return
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        whole_macro = self._macros.get(file, {}).get((start, end))
        kind = cursor.kind
        if kind in FUNCTIONS:
            if self._is_constexpr(cursor):
                return
            context = context.inside(cursor)
        elif kind == K.LAMBDA_EXPR:
            context = context.in_lambda()
        elif kind in (K.ENUM_DECL, K.STATIC_ASSERT, K.PARM_DECL, K.TEMPLATE_NON_TYPE_PARAMETER, K.TYPE_REF,
                      K.TEMPLATE_REF, K.NAMESPACE_REF, K.USING_DECLARATION, K.FRIEND_DECL):
            return
        elif kind == K.VAR_DECL and self._is_constexpr(cursor):
            return
        elif kind == K.VAR_DECL and context.function and cursor.storage_class == StorageClass.STATIC:
            context = dataclasses.replace(context, once=True)
        elif kind == K.FIELD_DECL and cursor.is_bitfield():
            return

        if whole_macro is not None:
            self._whole_macro(cursor, parent, context, file, start, end, whole_macro)
            return
        if kind.is_expression() or kind.is_statement():
            self._look(cursor, parent, context, file, start, end)

        children = list(cursor.get_children())
        if kind in FUNCTIONS:
            self._keep(cursor, children, context, file, start)
        if self._sets_memory_aside(self.texts[file][start:end]):
            return
        if kind == K.CASE_STMT:
            children = children[1:]
        if kind == K.VAR_DECL:
            children = [c for c in children if not self._is_array_bound(cursor, c)]
        for child in children:
            self._walk(child, cursor, context)

    def _is_constexpr(self, cursor):
        for token in cursor.get_tokens():
            if token.spelling == "constexpr":
                return True
            if token.spelling in ("(", "=", "{"):
                return False
        return False

    @staticmethod
    def _is_array_bound(cursor, child):
        return cursor.type.kind == TypeKind.CONSTANTARRAY and child.kind == K.INTEGER_LITERAL

    # --- sites

    def _add(self, context, file, start, end, kind, mutants, prefix, suffix, operator=None):
        text = self.texts[file][start:end].decode()
        key = (file, start, end, kind)
        if key in self.sites:
            return
        self.sites[key] = Site(file, start, end, kind, mutants, prefix, suffix, operator,
                               self.texts[file].count(b"\n", 0, start) + 1, context.function, " ".join(text.split()), context.once)

    @staticmethod
    def _sets_memory_aside(text):
        """With more or less of it the same comes out."""
        return re.fullmatch(rb"\w+\.reserve\([^;]*\)", text) is not None

    def _keep(self, cursor, children, context, file, start):
        """No mutant: an inline function of a header is compiled also where only tests call it, for them to meet its mutants."""
        template = cursor.kind == K.FUNCTION_TEMPLATE or cursor.semantic_parent.kind == K.CLASS_TEMPLATE
        from_macro = any(first == start for first, _ in self._macros.get(file, {}))
        if file.endswith(".h") and not template and not from_macro and any(c.kind == K.COMPOUND_STMT for c in children):
            self._add(context, file, start, cursor.extent.end.offset, "kept", [], "__attribute__((used)) ", "")

    def _whole_macro(self, cursor, parent, context, file, start, end, macro):
        if macro == "QStringLiteral":
            empty = re.fullmatch(rb'QStringLiteral\(\s*""\s*\)', self.texts[file][start:end])
            self._add(context, file, start, end, "string", ['"mutant"' if empty else '""'],
                      "mutation::text<{0}>(", ")")
        elif self._is_statement(cursor, parent) and context.function:
            self._add(context, file, start, end, "call", ["removed"], "(mutation::on({0}) ? void() : void(", "))")

    @staticmethod
    def _is_statement(cursor, parent):
        """An expression that stands as a statement, its value unused."""
        if parent is None or parent.kind not in STATEMENT_LISTS or not cursor.kind.is_expression():
            return False
        siblings = [c for c in parent.get_children()]
        index = next(i for i, c in enumerate(siblings) if c == cursor and c.extent == cursor.extent)
        if parent.kind == K.COMPOUND_STMT:
            return True
        if parent.kind == K.IF_STMT:
            condition = next((i for i, c in enumerate(siblings) if c.kind.is_expression()), -1)
            return index > condition
        if parent.kind in (K.FOR_STMT, K.WHILE_STMT, K.CXX_FOR_RANGE_STMT):
            return index == len(siblings) - 1
        if parent.kind == K.DO_STMT:
            return index == 0
        return index > 0 if parent.kind == K.CASE_STMT else True

    def _look(self, cursor, parent, context, file, start, end):
        kind = cursor.kind
        if context.function and self._is_statement(cursor, parent):
            self._statement(cursor, context, file, start, end)
        if kind == K.IF_STMT:
            self._if(cursor, context, file)
        elif kind in (K.WHILE_STMT, K.DO_STMT, K.FOR_STMT):
            self._loop(cursor, context, file)
        elif kind == K.CONDITIONAL_OPERATOR:
            self._condition(next(cursor.get_children()), context, file, both=True)
        elif kind == K.RETURN_STMT:
            self._return(cursor, parent, context, file, start, end)
        elif kind == K.BINARY_OPERATOR or kind == K.COMPOUND_ASSIGNMENT_OPERATOR:
            operands = list(cursor.get_children())
            if len(operands) == 2:
                self._binary(cursor, operands, context, file, start, end)
        elif kind == K.CALL_EXPR:
            self._call(cursor, context, file, start, end)
        elif kind == K.UNARY_OPERATOR:
            self._unary(cursor, context, file, start, end)
        elif kind == K.INTEGER_LITERAL:
            self._integer(context, file, start, end)
        elif kind == K.FLOATING_LITERAL:
            self._add(context, file, start, end, "number", ["one more"], "mutation::number<{0}, 0>(", ")")
        elif kind == K.CXX_BOOL_LITERAL_EXPR:
            word = self.texts[file][start:end]
            if word in (b"true", b"false"):
                self._add(context, file, start, end, "constant", ["false" if word == b"true" else "true"],
                          "mutation::flag<{0}>(", ")")
        elif kind == K.DECL_REF_EXPR:
            self._named(cursor, context, file, start, end)
        if kind in (K.CALL_EXPR, K.CXX_FUNCTIONAL_CAST_EXPR):
            self._latin(cursor, context, file, start, end)

    def _statement(self, cursor, context, file, start, end):
        text = self.texts[file][start:end]
        if text in (b"", b";") or self._sets_memory_aside(text):
            return
        self._add(context, file, start, end, "call", ["removed"], "(mutation::on({0}) ? void() : void(", "))")

    def _if(self, cursor, context, file):
        children = list(cursor.get_children())
        if b"constexpr" in self.texts[file][cursor.extent.start.offset:children[0].extent.start.offset]:
            return
        if children[0].kind == K.VAR_DECL:
            variable = children[0]
            end = variable.extent.end.offset
            self._add(context, file, variable.extent.start.offset, end, "condition", ["true", "false"], "",
                      "; mutation::condition<{0}, {1}>(static_cast<bool>(%s))" % variable.spelling)
            return
        expression = next((c for c in children if c.kind.is_expression()), None)
        if expression is not None:
            self._condition(expression, context, file, both=True)

    def _loop(self, cursor, context, file):
        children = list(cursor.get_children())
        text = self.texts[file]
        if cursor.kind == K.WHILE_STMT:
            if children[0].kind.is_expression():
                self._condition(children[0], context, file, both=False)
        elif cursor.kind == K.DO_STMT:
            self._condition(children[-1], context, file, both=False)
        else:
            # The part between the two semicolons of the head.
            for child in children[:-1]:
                if child.kind.is_expression() and text[child.extent.end.offset:].lstrip().startswith(b";"):
                    self._condition(child, context, file, both=False)

    def _condition(self, expression, context, file, both):
        start, end = expression.extent.start.offset, expression.extent.end.offset
        if not context.function or self.texts[file][start:end] in (b"true", b"false"):
            return
        mutants = ["true", "false"] if both else ["false"]
        prefix = "mutation::condition<{0}, {1}>(" if both else "mutation::condition<0, {0}>("
        self._add(context, file, start, end, "condition", mutants, prefix + "static_cast<bool>(", "))")

    def _return(self, cursor, parent, context, file, start, end):
        children = list(cursor.get_children())
        if not children or context.lambda_depth or context.result is None:
            return
        value = children[0]
        first, last = value.extent.start.offset, value.extent.end.offset
        text = self.texts[file][first:last].decode()
        if text in ("{}", "true", "false", "nullptr", "std::nullopt", "0") or re.fullmatch(r"[\w:]+\(\)", text) and text[0].isupper():
            return
        result = context.result.get_canonical()
        if result.kind == TypeKind.BOOL:
            if not any(op in text for op in ("==", "!=", "<", ">")) or "&&" in text or "||" in text:
                self._condition(value, context, file, both=True)
        elif result.kind not in (TypeKind.LVALUEREFERENCE, TypeKind.VOID):
            self._add(context, file, start, end, "return", ["return {}"], "if (mutation::on({0})) return {{}}; else ", "")

    def _operator_between(self, file, left, right):
        first, last = left.extent.end.offset, right.extent.start.offset
        between = self.texts[file][first:last]
        word = between.strip()
        if not word or re.search(rb"[\s\w()]", word):
            return None, None
        begin = first + between.index(word)
        return word.decode(), (begin, begin + len(word))

    def _binary(self, cursor, operands, context, file, start, end):
        left, right = operands
        if left.extent.start.offset != start or right.extent.end.offset != end:
            return
        name, place = self._operator_between(file, left, right)
        if name is None:
            return
        if name in ("&&", "||"):
            if not context.function:
                return
            function = "both" if name == "&&" else "either"
            self._add(context, file, start, end, "logic",
                      ["||" if name == "&&" else "&&", "without the left side", "without the right side"],
                      "mutation::" + function + "<{0}, {1}, {2}>(static_cast<bool>(", "); }})",
                      (*place, "), [&] {{ return static_cast<bool>("))
        elif name in COMPARISONS:
            function, boundary, negated = COMPARISONS[name]
            self._add(context, file, start, end, "comparison", [boundary, negated],
                      "mutation::" + function + "<{0}, {1}>(", ")", (*place, ","))
        elif name in EQUALITIES:
            function, negated = EQUALITIES[name]
            self._add(context, file, start, end, "comparison", [negated], "mutation::" + function + "<{0}>(", ")",
                      (*place, ","))
        elif name in ARITHMETIC:
            function, other = ARITHMETIC[name]
            result = cursor.type.get_canonical()
            if name == "+" and result.spelling == "QString":
                self._add(context, file, start, end, "arithmetic", ["without the left side", "without the right side"],
                          "mutation::joined<{0}, {1}>(", ")", (*place, ","))
            elif result.kind in NUMBERS or result.spelling == "basix::FixNumber" or name in "|&":
                self._add(context, file, start, end, "arithmetic", [other], "mutation::" + function + "<{0}>(", ")",
                          (*place, ","))
        elif name in ASSIGNMENTS:
            function, other = ASSIGNMENTS[name]
            if "QString" not in left.type.get_canonical().spelling and "QList" not in left.type.get_canonical().spelling:
                self._add(context, file, start, end, "arithmetic", [other], "mutation::" + function + "<{0}>(", ")",
                          (*place, ","))

    def _call(self, cursor, context, file, start, end):
        name = cursor.spelling
        text = self.texts[file][start:end]
        if name == "tr" and re.match(rb"([\w:]+::)?tr\(", text):
            self._add(context, file, start, end, "string", ['""'], "mutation::text<{0}>(", ")")
        elif name.startswith("operator") and not name[8:9].isalnum():
            operands = list(cursor.get_arguments())
            if len(operands) == 2:
                self._binary(cursor, operands, context, file, start, end)
            elif len(operands) == 1 and name in ("operator!", "operator-"):
                self._unary(cursor, context, file, start, end)

    def _unary(self, cursor, context, file, start, end):
        text = self.texts[file][start:end]
        for token, function, mutant, kind in ((b"++", "incremented", "--", "arithmetic"),
                                              (b"--", "decremented", "++", "arithmetic"),
                                              (b"!", "negation", "without !", "logic"),
                                              (b"-", "minus", "without -", "arithmetic")):
            if text.startswith(token):
                self._add(context, file, start, end, kind, [mutant], "mutation::" + function + "<{0}>(", ")",
                          (start, start + len(token), ""))
                return

    def _integer(self, context, file, start, end):
        text = self.texts[file][start:end].decode()
        if not re.fullmatch(r"(0[xX][0-9a-fA-F']+|[0-9']+)[uUlL]*", text):
            return
        if text == "0":
            self._add(context, file, start, end, "number", ["one more"], "mutation::number<{0}, 0>(", ")")
        else:
            self._add(context, file, start, end, "number", ["one more", "one less"], "mutation::number<{0}, {1}>(", ")")

    def _named(self, cursor, context, file, start, end):
        target = cursor.referenced
        if target is None or not context.function:
            return
        if target.kind == K.ENUM_CONSTANT_DECL:
            pass
        elif target.kind == K.VAR_DECL and self._is_constexpr(target):
            pass
        else:
            return
        if cursor.type.get_canonical().kind not in NAMED:
            return
        if not re.fullmatch(rb"[\w:]+", self.texts[file][start:end]):
            return
        self._add(context, file, start, end, "constant", ["the next value"], "mutation::constant<{0}>(", ")")

    def _latin(self, cursor, context, file, start, end):
        text = self.texts[file][start:end]
        if re.match(rb"QLatin1Char\('", text) and text.endswith(b"')"):
            self._add(context, file, start, end, "string", ["another character"], "mutation::letter<{0}>(", ")")
        elif re.match(rb'QLatin1String\("', text) and text.endswith(b'")'):
            self._add(context, file, start, end, "string", ['"mutant"' if text == b'QLatin1String("")' else '""'],
                      "mutation::text<{0}>(", ")")


@dataclasses.dataclass(frozen=True)
class Context:
    function: str = ""
    result: object = None
    lambda_depth: int = 0
    once: bool = False

    def inside(self, cursor):
        owner = cursor.semantic_parent
        name = cursor.spelling
        if owner is not None and owner.kind in (K.CLASS_DECL, K.STRUCT_DECL, K.CLASS_TEMPLATE):
            name = owner.spelling + "::" + name
        return Context(name, cursor.result_type, 0)

    def in_lambda(self):
        return dataclasses.replace(self, lambda_depth=self.lambda_depth + 1, function=self.function or "lambda")


def words_of(command):
    """What clang has to know of a compiler's command line: where to look for headers, and the macros."""
    words, taken, index = shlex.split(command), [], 0
    while index < len(words):
        word = words[index]
        if word in ("-I", "-isystem", "-D"):
            taken += [word, words[index + 1]]
            index += 1
        elif word.startswith(("-I", "-D", "-isystem", "-std=")):
            taken.append(word)
        index += 1
    return taken + ["-fPIC"]


def compile_arguments(database, keep):
    """{source: clang arguments} of those entries of compile_commands.json whose source `keep` accepts."""
    with open(database) as stream:
        return {entry["file"]: words_of(entry["command"]) + ["-x", "c++"]
                for entry in json.load(stream) if keep(entry["file"])}
