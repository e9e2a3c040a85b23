"""The small changes that scripts/mutate makes: each replaces one line, or swaps two."""
import collections
import os
import re

Change = collections.namedtuple("Change", "path line count kind old new")

# Fields that can stand in for one another without the compiler noticing.
SIBLINGS = [
    ["intf_name", "phy_addr", "redundancy_group_phy_addr"],
    ["bridge_port_number", "redundancy_group_id"],
    ["extraShutdown", "extraBlocking", "configShutdown"],
    ["extrashutdown", "extrablocking", "configshutdown"],
    ["if_l2_switching", "if_in_bundle", "l2_bundle", "l2_sub_if", "point_to_point",
     "if_multicast"],
    ["l1", "l2", "vp", "l2_sub_if", "virtual_if"],
    ["collecting", "distributing"], ["lag", "member"], ["zorid", "parent"], ["id", "parent"],
    ["getId", "getParent"],
    ["clientAddress", "token"],
    ["left", "right"], ["begin", "end"], ["next", "prev"],
    ["shutStates", "blockStates"],
    ["ZORL2_PHY_ADDR_SIZE", "ZORL2_INTF_NAME_SIZE"],
    ["ZORL2_REDUNDANCY_GROUP_PHY_ADDR_SIZE", "ZORL2_INTF_NAME_SIZE"],
    ["L1", "L2", "VP", "L2_SUB_IF", "VIRTUAL_IF"],
    ["BLOCK_STATE_BLOCK", "BLOCK_STATE_FORWARD"],
    ["PROTOCOL_UNKNOWN", "LLDP", "L2VM", "LACP", "STP", "ERPS", "CFM", "LBD", "LFD", "EFM",
     "BACKUPLINK"],
    ["IF_ADMIN_UP", "IF_ADMIN_DOWN"], ["UP", "DOWN"], ["LINK_UP", "LINK_DOWN"],
    ["MODE_UNKNOWN", "HALF", "FULL"],
    ["TYPE_UNKNOWN", "OTHER", "ETHERNET", "ETHERNET_L2_VLAN", "ETHERNET_BUNDLE"],
    ["NONE", "C_VLAN", "S_VLAN", "B_VLAN", "ANY"],
    ["SPEED_UNKNOWN", "SPEED_100_KBS", "SPEED_1_MBS", "SPEED_10_MBS", "SPEED_100_MBS",
     "SPEED_1_GBS", "SPEED_10_GBS", "SPEED_25_GBS", "SPEED_40_GBS", "SPEED_100_GBS",
     "SPEED_1_TBS", "SPEED_10_TBS"],
]
OPERATORS = [("==", "!="), ("!=", "=="), (" != ", " < "), (" != ", " > "), ("&&", "||"),
             ("||", "&&"), (" < ", " <= "), (" < ", " > "), (" <= ", " < "), (" > ", " >= "),
             (" >= ", " > "), (" + ", " - "), (" - ", " + "), ("++", "--")]
WIDTHS = [("std::uint8_t", "std::uint16_t"), ("std::uint16_t", "std::uint8_t"),
          ("std::uint16_t", "std::uint32_t"), ("std::uint32_t", "std::uint16_t"),
          ("std::uint32_t", "std::int32_t"), ("std::uint64_t", "std::uint32_t"),
          ("uint32_t", "uint16_t"), ("std::int32_t", "std::int16_t"),
          ("std::int32_t", "std::uint32_t")]
# Words whose loss or replacement still compiles.
WORDS = [(r"std::move\((\w+)\)", r"\1", "copied"), (r"\bnoexcept\b", "", "specifier"),
         (r"\bnew \(std::nothrow\)", "new", "specifier"), (r"\bZORL2_(C_)?EXPORT ", "", "hidden"),
         (r"\bdelete\[\] ", "delete ", "release"), (r"\bdelete (?=\w)", "delete[] ", "release"),
         (r"std::bad_alloc&", "std::bad_array_new_length&", "specifier"),
         (r"\bstd::exit\b", "std::_Exit", "call"), (r"\bRelease\(\)", "Build()", "call"),
         (r"\bBuild\(\)", "Release()", "call"), (r"\binsert_or_assign\b", "emplace_hint", "call"),
         (r"\bsizeof\(\*(\w+)\)", r"sizeof(\1)", "call"),
         (r"^(\s+\w+(?:\.|->)\w+(?:\[\w+\])?) = ", r"\1 += ", "assigned"),
         (r"^(\s+\w+(?:\.|->)\w+(?:\[\w+\])?) = ", r"\1 |= ", "assigned"),
         (r"\b__func__\b", '""', "text"), (r"\b__FILE__\b", '""', "text"),
         (r"\b__LINE__\b(?! ==)", "(__LINE__ + 1)", "text"),
         (r" = (0|false|[A-Z]\w*);", ";", "uninitialised"),
         # Where a variable takes its type from the cast, or a comparison does.
         (r"(?<=auto number = )static_cast<[^<>]+>\(", "(", "cast"),
         (r"(?<=auto place = )static_cast<[^<>]+>\(", "(", "cast"),
         (r"(?<=> |= )(?<!\w = )static_cast<[^<>]+>\(", "(", "cast")]

SKIPPED = ("#", "*", "/*", "namespace", "using", "static_assert", "template", "friend",
           "extern", "class ", "enum ", "//")
STATEMENT = re.compile(r"^\s+[\w.*:>()\[\]<, &-]+(\(.*\)| [|&+-]?= .*);\s*$")
NO_STATEMENT = re.compile(
    r"^\s+(return|const |static |auto |case |delete |std::\w+ \w+ =|if |for )")
DECLARATION = re.compile(r"^\s+(const )?[\w:]+(<.*>)?[&*]? \w+$")
# What may run out of memory, refuse a value or depend on what stands before it.
ORDERED = re.compile(r"Table::|\b(To\w+|Clear|ZORL2_NESTED|push_back|insert|Reserve|\w*[aA]dd\w*"
                     r"|at|set_(\w*(name|addr|token))|delete|pvex_\w+|exit|memset|NewBuffer)\b|"
                     r"(name|addr|token|generalInfo|Release\(\))")
REPEATED = re.compile(r"\b(push_back|add_\w+|add\w*Proto|addBlockInfo|Append|Add|pvex_\w+)\(")


def _split(text, separator):
    """The parts of a text between separators that stand outside of all brackets."""
    parts, depth, start = [], 0, 0
    for i, character in enumerate(text):
        depth += (character in "([{") - (character in ")]}")
        if depth == 0 and text.startswith(separator, i):
            parts.append(text[start:i])
            start = i + len(separator)
    return parts + [text[start:]]


def _conditions(code):
    match = re.search(r"\bif \(", code)
    if not match:
        return
    depth, start = 1, match.end()
    for end in range(start, len(code)):
        depth += (code[end] == "(") - (code[end] == ")")
        if depth == 0:
            break
    else:
        return
    condition, before, after = code[start:end], code[:start], code[end:]
    yield "negated", before + "!(" + condition + ")" + after
    yield "decided", before + "true" + after
    yield "decided", before + "false" + after
    for separator in (" && ", " || "):
        parts = _split(condition, separator)
        for i in range(len(parts) if len(parts) > 1 else 0):
            yield "decided", before + separator.join(parts[:i] + parts[i + 1:]) + after


def _arguments(code):
    """Calls with two arguments, the other way round."""
    if code.rstrip().endswith("{") and "if (" not in code:
        return  # A declaration.
    for match in re.finditer(r"\b\w+\(([^(),]+(?:\([^()]*\))?), ([^(),]+(?:\([^()]*\))?)\)", code):
        yield "arguments", (code[:match.start(1)] + match.group(2) + ", " + match.group(1)
                            + code[match.end(2):])


def _rows(code):
    """Rows of a table, one gone at a time."""
    if re.match(r"^\s+\{.*\},?\s*$", code) and not code.strip().startswith("{}"):
        for match in re.finditer(r"\{[^{}]*\},?", code):
            yield "row", code[:match.start()] + code[match.end():]


def variants(code):
    """The changed forms of one line of code, each with a word that says what was done."""
    indent = re.match(r"\s*", code).group()
    if STATEMENT.match(code) and not NO_STATEMENT.match(code):
        yield "dropped", indent + ";"
        if REPEATED.search(code):
            yield "repeated", code.rstrip() + " " + code.strip()
    if re.match(r"^\s+(delete(\[\])? |throw;)", code):
        yield "dropped", indent + ";"
    yield from _conditions(code)
    returned = re.match(r"^(.*\breturn) (.+);(.*)$", code)
    if returned and returned.group(2) not in ("true", "false", "*this", "{}", "nullptr"):
        yield "returned", f"{returned.group(1)} {{}};{returned.group(3)}"
        yield "returned", f"{returned.group(1)} true;{returned.group(3)}"
    for match in re.finditer(r"(?<![\w.:\"])(\d+)(?![\w.\"])", code):
        number = int(match.group(1))
        for other in [number + 1] + ([number - 1] if number > 1 else []):
            yield "constant", code[:match.start()] + str(other) + code[match.end():]
    for old, new in (("true", "false"), ("false", "true")):
        for match in re.finditer(rf"\b{old}\b", code):
            yield "constant", code[:match.start()] + new + code[match.end():]
    for old, new in OPERATORS:
        for match in re.finditer(re.escape(old), code):
            if "<<" not in code and "template" not in code:
                yield "operator", code[:match.start()] + new + code[match.end():]
    for old, new in WIDTHS:
        for match in re.finditer(rf"(?<![\w:]){old}\b", code):
            yield "width", code[:match.start()] + new + code[match.end():]
    for old, new, kind in WORDS:
        for match in re.finditer(old, code):
            yield kind, code[:match.start()] + match.expand(new) + code[match.end():]
    yield from _arguments(code)
    yield from _rows(code)
    for group in SIBLINGS:
        for i, old in enumerate(group):
            new = group[(i + 1) % len(group)]
            for match in re.finditer(rf"(?<![A-Za-z0-9])(set_)?{old}(?![A-Za-z0-9_])", code):
                at = match.end() - len(old)
                if DECLARATION.match(code[:match.end()]) or re.match(r"^\s+\w+ = \d+,", code):
                    continue  # Would name two things alike.
                yield "swapped", code[:at] + new + code[match.end():]


def _is_skipped(line, path):
    stripped = line.strip()
    if path == "c_api/intf_entry.h" and re.match(r"#define ZORL2_\w+_SIZE ", stripped):
        return False
    return not stripped or stripped.startswith(SKIPPED)


def _reordered(first, second, header):
    """Two neighbours that may change places: statements, or the members of a record."""
    if re.match(r"\s*", first).group() != re.match(r"\s*", second).group():
        return False
    if header and re.match(r"^\s+[\w:<>, ]+ \w+( = \w+)?;\s*$", first) and re.match(
            r"^\s+[\w:<>, ]+ \w+( = \w+)?;\s*$", second):
        return True
    plain = [STATEMENT.match(c) or c.strip().startswith("delete") for c in (first, second)]
    plain[0] = plain[0] or re.match(r"^\s+if \(.*\) return \w+;\s*$", first)
    plain[1] = plain[1] or re.match(r"^\s+if \(.*\) return \w+;\s*$", second)
    return all(plain) and bool(ORDERED.search(first) or ORDERED.search(second))


def changes_of(root, path):
    with open(os.path.join(root, path)) as f:
        lines = f.read().split("\n")
    seen = set()
    codes = []
    for i, line in enumerate(lines):
        comment = line.find("//")
        if path.startswith("c_api") and "/*" in line:
            comment = line.find("/*")
        code = line if comment < 0 else line[:comment]
        rest = line[len(code):]
        codes.append(code)
        if _is_skipped(line, path):
            # Visibility is part of what a class or an instantiation says.
            if "ZORL2_EXPORT " in code and not code.startswith("#"):
                yield Change(path, i, 1, "hidden", line, line.replace("ZORL2_EXPORT ", "", 1))
            continue
        for kind, changed in variants(code):
            if changed.strip() != code.strip() and (i, changed) not in seen:
                seen.add((i, changed))
                yield Change(path, i, 1, kind, line, changed + rest)
    # Neighbours, with nothing but blank lines and comments between them.
    places = [i for i, code in enumerate(codes) if code.strip()]
    for i, j in zip(places, places[1:]):
        if not _is_skipped(lines[i], path) and not _is_skipped(lines[j], path) and _reordered(
                codes[i], codes[j], path.endswith(".h")):
            yield Change(path, i, j - i + 1, "reordered", "\n".join(lines[i:j + 1]),
                         "\n".join([lines[j], *lines[i + 1:j], lines[i]]))


def files(root, headers):
    """Public headers on request only: the tests are compiled with them, and again per change."""
    for folder in ("native", "convert", "c_api"):
        for name in sorted(os.listdir(os.path.join(root, folder))):
            path = f"{folder}/{name}"
            if not name.endswith((".cpp", ".h")) or name in ("export.h", "pvex_fault.h"):
                continue
            if headers or not is_public(path):
                yield path


def is_public(path):
    if not path.endswith(".h"):
        return False
    return not path.startswith("convert/") or path in PUBLIC


PUBLIC = {f"convert/{name}.h" for name in (
    "converter", "enum_serialization", "info_client_config_converter",
    "intf_entry_convert_helper_protobuf", "intf_entry_convert_helper_zor", "intf_entry_converter",
    "intf_state_converter", "lag_member_converter", "zorid_converter")}


def all_changes(root, headers):
    for path in files(root, headers):
        yield from changes_of(root, path)


def key(change):
    """How a change is named in the list of those that change nothing."""
    return (change.path, " ".join(change.old.split()), " ".join(change.new.split()))
