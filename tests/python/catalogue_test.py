"""Every class, property, method and enumeration of the catalogue is reachable and behaves."""

import enum
import json
import os
import subprocess
import unittest

from quillon import _core, chart

CATALOGUE = json.loads(subprocess.check_output([os.environ["QUILLON_REPORT"], "--classes", "--json"]))["classes"]
CLASSES = [entry for entry in CATALOGUE if "members" not in entry]
SCALARS = {
    "double scalar": 2.5,
    "uint32 scalar": 50,
    "uint64 scalar": 1,
    "logical scalar": True,
    "OrcaFactoryString scalar": "red",
    "OrcaFactoryString vector": ["Q1", "Q2"],
    "any": "blue",
}


def find(name):
    return getattr(chart, name.rpartition(".")[2])


def make(cls):
    """An object of a class, or of a subclass when it has no constructor; None when there is no such object."""
    return next((kind() for kind in (cls, *cls.__subclasses__()) if _core.constructors(kind)), None)


def sample(host_type):
    if host_type in SCALARS:
        return SCALARS[host_type]
    cls = find(host_type)
    return list(cls)[-1] if issubclass(cls, enum.Enum) else make(cls)


def result_type(host_type):
    return list if host_type.endswith(" vector") else type(sample(host_type))


def members(kind):
    """The properties or methods of the classes, each with an object; items are appended before they are asked for."""
    for entry in CLASSES:
        owner = make(find(entry["name"]))
        yield from ((owner, member) for member in entry[kind])


class Catalogue(unittest.TestCase):
    def test_names_members_and_superclasses(self):
        names = [entry["name"] for entry in CATALOGUE]
        self.assertEqual([f"quillon.chart.{name}" for name in chart.__all__ if name[0].isupper()], names)
        for entry in CATALOGUE:
            cls = find(entry["name"])
            self.assertEqual(f"{cls.__module__}.{cls.__qualname__}", entry["name"])
            self.assertTrue(cls.__doc__.startswith(entry["description"]), cls.__doc__)
            if "members" in entry:
                self.assertEqual([{"name": member.name, "value": member.value} for member in cls], entry["members"])
                continue
            self.assertTrue(issubclass(cls, chart.Object), cls)
            for name in set(entry["superclasses"]) & set(names):
                self.assertIs(cls.__base__, find(name))

    def test_constructors(self):
        for entry in CLASSES:
            cls = find(entry["name"])
            for form in entry["constructors"]:
                values = {argument["name"]: sample(argument["type"]) for argument in form["arguments"]}
                with self.subTest(form["signature"]):
                    self.assertIs(type(cls(*values.values())), cls)
                    self.assertIs(type(cls(**values)), cls)
            if not entry["constructors"]:
                self.assertRaisesRegex(TypeError, f"^{cls.__name__}: .*no constructor", cls)

    def test_properties(self):
        for owner, member in members("properties"):
            name, set_type = member["name"], member["setType"] if "set" in member["access"] else None
            with self.subTest(type(owner).__name__ + "." + name):
                self.assertTrue(getattr(type(owner), name).__doc__.endswith(member["description"]))
                self.assertIn(name, dir(owner))
                if set_type is None:
                    self.assertRaisesRegex(AttributeError, f"{name}: .*read-only", setattr, owner, name, 1)
                else:
                    setattr(owner, name, value := sample(set_type))
                if set_type == member["type"]:
                    self.assertEqual(getattr(owner, name), value)
                self.assertIsInstance(getattr(owner, name), result_type(member["type"]))

    def test_methods(self):
        for owner, form in members("methods"):
            values = [sample(argument["type"]) for argument in form["arguments"]]
            with self.subTest(form["signature"]):
                method = getattr(owner, form["name"])
                self.assertIsInstance(method(*values), result_type(form["returns"]))
                self.assertIn(form["description"], method.__doc__)
