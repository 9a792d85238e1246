#!/usr/bin/env python3
"""check-reference.py <doxygen xml dir>: fails when the API reference leaves
out a public member of a public class.

The members the headers declare come from clang's syntax tree of the
umbrella header math/ZEMath.h: every class of namespace Lux outside the impl
and detail namespaces, with its public members and, through its public bases,
the public members it inherits (a name the class declares itself hides the
bases' members of that name unless it brings them in with `using`).
Constructors, destructors and copy assignments count for their own class
only; deleted functions do not count. A member is known by its name and its
number of parameters. The reference must list each
one on the class's page with its one-line (brief) description."""

import json
import os
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
MEMBER_KINDS = {"FieldDecl", "VarDecl", "CXXMethodDecl", "CXXConstructorDecl", "CXXDestructorDecl",
                "CXXConversionDecl", "FunctionTemplateDecl", "TypedefDecl", "TypeAliasDecl", "EnumDecl"}
SPECIAL = ("CXXConstructorDecl", "CXXDestructorDecl")


def configured_headers(folder):
    """Writes the header CMake configures (math/zeMathConfig.h) into folder."""
    os.makedirs(os.path.join(folder, "math"))
    with open(os.path.join(ROOT, "math/zeMathConfig.h.in")) as template:
        text = re.sub(r"@[A-Z_]+_VALUE@", "1", template.read())
    with open(os.path.join(folder, "math/zeMathConfig.h"), "w") as header:
        header.write(text)


def syntax_tree():
    """The top-level declarations whose names mention Lux, as JSON objects."""
    with tempfile.TemporaryDirectory() as configured:
        configured_headers(configured)
        out = subprocess.run(["clang++-14", "-std=c++17", "-I" + ROOT, "-I" + configured, "-fsyntax-only", "-x",
                              "c++", "-Wno-pragma-once-outside-header", "-Xclang", "-ast-dump=json", "-Xclang",
                              "-ast-dump-filter=Lux", os.path.join(ROOT, "math/ZEMath.h")],
                             check=True, capture_output=True, text=True).stdout
    decoder, position, objects = json.JSONDecoder(), 0, []
    while True:
        position = len(out) - len(out[position:].lstrip())
        if position == len(out):
            return objects
        node, position = decoder.raw_decode(out, position)
        objects.append(node)


def arity(node):
    """Parameters of a function (or function template), None for the rest."""
    if node["kind"] == "FunctionTemplateDecl":
        node = next(n for n in node["inner"] if n["kind"].endswith("Decl") and "Template" not in n["kind"]
                    and n["kind"] != "NonTypeTemplateParmDecl")
    if node["kind"] not in ("CXXMethodDecl", "CXXConstructorDecl", "CXXDestructorDecl", "CXXConversionDecl"):
        return None
    return sum(1 for n in node.get("inner", []) if n["kind"] == "ParmVarDecl")


class Record:
    def __init__(self, name, node):
        self.name = name
        self.public_members = set()  # (name, arity, own class only)
        self.declared = set()  # every name the class declares itself, whatever its access
        self.brought_in = set()  # names brought in from bases with `using`
        self.bases = [b["type"].get("desugaredQualType", b["type"]["qualType"])
                      for b in node.get("bases", []) if b["access"] == "public"]
        access = "public" if node.get("tagUsed") == "struct" else "private"
        for member in node.get("inner", []):
            kind = member["kind"]
            if kind == "AccessSpecDecl":
                access = member["access"]
            elif kind == "UsingDecl":
                self.brought_in.add(member["name"].split("::")[-1])
            elif kind in MEMBER_KINDS and not member.get("isImplicit") and member.get("name"):
                name = re.sub(r"<.*>$", "", member["name"])  # zeSmartPointer<T>() is zeSmartPointer()
                self.declared.add(name)
                if access == "public" and not member.get("explicitlyDeleted"):
                    self.public_members.add((name, arity(member), kind in SPECIAL or name == "operator="))


def collect(node, scope, records, public):
    """Records by qualified name; `public` gets the names of the public classes."""
    kind = node["kind"]
    if kind == "NamespaceDecl":
        inner_scope = scope + [node.get("name", "(anonymous)")]
        for child in node.get("inner", []):
            collect(child, inner_scope, records, public)
    elif kind == "ClassTemplateDecl":
        for child in node.get("inner", []):
            if child["kind"] == "CXXRecordDecl":
                collect(child, scope, records, public)
    elif kind == "CXXRecordDecl" and node.get("completeDefinition") and node.get("name"):
        name = "::".join(scope + [node["name"]])
        records[name] = Record(name, node)
        if not any(part in ("impl", "detail", "(anonymous)") for part in scope):
            public.add(name)
        access = "public" if node.get("tagUsed") == "struct" else "private"
        for child in node.get("inner", []):
            if child["kind"] == "AccessSpecDecl":
                access = child["access"]
            elif child["kind"] in ("CXXRecordDecl", "ClassTemplateDecl") and not child.get("isImplicit"):
                nested = {}
                collect(child, scope + [node["name"]], records, nested if access != "public" else public)


def resolve(base, within, records):
    """The record a base type names, looked up from the scope of `within`."""
    name = re.sub(r"<.*", "", base)
    scope = within.split("::")[:-1]
    while True:
        candidate = "::".join(scope + [name]) if scope else name
        if candidate in records:
            return records[candidate]
        if not scope:
            return None
        scope.pop()


def visible_members(record, records):
    """(name, arity) of every public member callable on the class."""
    own = {(name, count) for name, count, _ in record.public_members}
    members = set(own)
    for base in record.bases:
        base_record = resolve(base, record.name, records)
        if base_record is None:
            continue
        for name, count in visible_members(base_record, records) - own_special(base_record):
            if name not in record.declared or name in record.brought_in:
                members.add((name, count))
    return members


def own_special(record):
    """Constructors, destructors and assignments: not inherited."""
    return {(name, count) for name, count, special in record.public_members if special}


def reference(xml_dir):
    """Public members with a brief description, per class, from Doxygen's XML."""
    listed = {}
    for compound in ET.parse(os.path.join(xml_dir, "index.xml")).getroot().iter("compound"):
        if compound.get("kind") not in ("class", "struct"):
            continue
        members = set()
        page = ET.parse(os.path.join(xml_dir, compound.get("refid") + ".xml")).getroot()
        for member in page.iter("memberdef"):
            described = "".join(member.find("briefdescription").itertext()).strip()
            if member.get("prot") != "public" or not described:
                continue
            count = len(member.findall("param")) if member.get("kind") == "function" else None
            members.add((member.findtext("name"), count))
        listed[compound.findtext("name")] = members
    return listed


def main():
    records, public = {}, set()
    for node in syntax_tree():
        collect(node, [], records, public)
    listed = reference(sys.argv[1])
    missing, checked = [], 0
    for name in sorted(public):
        for member, count in sorted(visible_members(records[name], records), key=str):
            checked += 1
            if (member, count) not in listed.get(name, set()):
                shown = member if count is None else "%s(%d parameter%s)" % (member, count, "" if count == 1 else "s")
                missing.append("%s::%s" % (name, shown))
    for entry in missing:
        print("not in the reference: " + entry)
    print("%d public classes, %d public members; %d missing from the reference" % (len(public), checked, len(missing)))
    return 1 if missing or not checked else 0


if __name__ == "__main__":
    sys.exit(main())
