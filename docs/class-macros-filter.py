#!/usr/bin/env python3
"""Doxygen input filter: writes out the members that the class macros of
core/zeClassRegistration.h (and the library's forms of them) declare, each
with its one-line description, so that every class's page lists them.

Each use of a declaration macro in a class body becomes the declarations it
stands for, on the same line, so line numbers stay as they are."""

import re
import sys


def doc(text, declaration):
    return "/** %s */ %s " % (text, declaration)


def class_members(c):
    return (
        "protected: "
        + doc("Not for programs: objects are made by the class descriptor, with Lux::zeCreate<%s>(pool)." % c,
              "%s();" % c)
        + "public: "
        + doc("The class descriptor; null until the class is registered.", "static ::Lux::zeMetaObject* _Meta;")
        + doc("Registers the class once, its parent first.", "static void bayRegister();")
        + doc("The registration step that zeBayRegister runs once.",
              "static ::Lux::zeRegistrationResult bayRegisterInternal();")
        + doc("The class's virtual-table pointer.", "static void* retrieveVTablePointer();")
        + doc("The class descriptor as it is: null while the class is unregistered.",
              "static ::Lux::zeMetaObject* getClassMeta();")
        + doc("The class descriptor, registering the class first unless it is registered.",
              "static ::Lux::zeMetaObject* getClassMetaSafe();")
        + doc("A new object from `pool` (null: the default pool) with one reference for the caller, the class "
              "registered first; null when none can be made.",
              "static ::Lux::zeObject* _instantiateFromPool(::Lux::zeMemoryPool* pool);")
    )


def field_class_members(c):
    return (
        class_members(c)
        + doc("The shared instance of this field type, listed in zeMetaField::_MetaFieldList; null until the "
              "class is registered.", "static ::Lux::zeMetaField* _MetaField;")
        + doc("Registration step: creates the shared instance.", "static void bayRegisterMetaValidate();")
        + doc("Drops the shared instance when the class is unregistered.", "static void _releaseMetaField();")
        + doc("The shared instance of this field type, _MetaField.",
              "::Lux::zeMetaField* getGenericMetaField() override;")
    )


def field_slot(name):
    return doc('The slot through which the descriptor of the reflected field "%s" is published.' % name,
               "static ::Lux::zeMetaField* k%s;" % name)


def initialize(text):
    return doc("Registration: %s." % text, "static void bayRegisterInitialize();")


EXPANSIONS = {
    "ZE_DECLARE_CLASS": lambda api, c: class_members(c),
    "ZE_MATH_DECLARE_CLASS": class_members,
    "ZE_DECLARE_FIELD_CLASS": lambda api, c: field_class_members(c),
    "ZE_MATH_DECLARE_FIELD_CLASS": field_class_members,
    "ZE_DECLARE_FIELD_SLOT": lambda api, name: field_slot(name),
    "ZE_MATH_DECLARE_FIELD_SLOT": field_slot,
    "ZE_MATH_DECLARE_ARRAY_FIELD_CLASS": lambda c: field_class_members(c) + field_slot("_num")
    + initialize('declares "_num", the element count'),
    "ZE_MATH_DECLARE_DATA_LIST_CLASS": lambda c: class_members(c) + field_slot("_data")
    + initialize('retypes "_data" with the field type of the elements'),
    "ZE_MATH_DECLARE_FUNCTION_LIST_CLASS": lambda c, f: class_members(c)
    + doc("The type of an entry, a plain function pointer.", "using Function = %s;" % f),
}

USE = re.compile(r"^(\s*)(ZE_\w+)\(([^()]*)\)\s*$")

with open(sys.argv[1], encoding="utf-8") as source:
    for line in source:
        use = USE.match(line)
        if use and use.group(2) in EXPANSIONS:
            arguments = [a.strip() for a in use.group(3).split(",")]
            line = use.group(1) + EXPANSIONS[use.group(2)](*arguments) + "\n"
        sys.stdout.write(line)
