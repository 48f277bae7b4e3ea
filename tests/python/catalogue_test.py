"""Every class, property, method and enumeration of the catalogue is reachable and behaves."""

import enum
import json
import os
import subprocess
import unittest

from quillon import chart

CATALOGUE = json.loads(subprocess.check_output([os.environ["QUILLON_REPORT"], "--classes", "--json"]))["classes"]
CLASSES = [entry for entry in CATALOGUE if "members" not in entry]
ENUMERATIONS = [entry for entry in CATALOGUE if "members" in entry]

SCALARS = {
    "double scalar": 2.5,
    "uint32 scalar": 50,
    "uint64 scalar": 1,
    "logical scalar": True,
    "OrcaFactoryString scalar": "red",
    "OrcaFactoryString vector": ["Q1", "Q2"],
    "any": "blue",
}
RESULTS = {
    "double scalar": float,
    "uint32 scalar": int,
    "uint64 scalar": int,
    "logical scalar": bool,
    "OrcaFactoryString scalar": str,
    "OrcaFactoryString vector": list,
    "any": str,
}


def find(name):
    return getattr(chart, name.rpartition(".")[2])


def make(cls):
    """An object of a class, or of a subclass when it has no constructor; None when there is no such object."""
    for kind in (cls, *cls.__subclasses__()):
        try:
            return kind()
        except TypeError:
            pass
    return None


def sample(host_type):
    if host_type in SCALARS:
        return SCALARS[host_type]
    cls = find(host_type)
    return list(cls)[-1] if issubclass(cls, enum.Enum) else make(cls)


def result_type(host_type):
    if host_type.endswith(" vector"):
        return list
    return RESULTS.get(host_type) or find(host_type)


class Catalogue(unittest.TestCase):
    def test_all_classes_are_there_in_their_order(self):
        names = [entry["name"].rpartition(".")[2] for entry in CATALOGUE]
        self.assertEqual([name for name in chart.__all__ if name[0].isupper()], names)
        for entry in CATALOGUE:
            cls = find(entry["name"])
            self.assertEqual(f"{cls.__module__}.{cls.__qualname__}", entry["name"])
            self.assertTrue(cls.__doc__.startswith(entry["description"]), cls.__doc__)

    def test_superclasses(self):
        for entry in CLASSES:
            cls = find(entry["name"])
            self.assertTrue(issubclass(cls, chart.Object), cls)
            for name in entry["superclasses"]:
                if name in (other["name"] for other in CLASSES):
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
        for entry in CLASSES:
            owner = make(find(entry["name"]))
            for member in entry["properties"]:
                with self.subTest(entry["name"] + "." + member["name"]):
                    self.check_property(owner, member)

    def check_property(self, owner, member):
        name = member["name"]
        self.assertTrue(getattr(type(owner), name).__doc__.endswith(member["description"]))
        self.assertIn(name, dir(owner))
        if "set" not in member["access"]:
            self.assertIsInstance(getattr(owner, name), result_type(member["type"]))
            return self.assertRaisesRegex(AttributeError, f"{name}: .*read-only", setattr, owner, name, 1)
        value = sample(member["setType"])
        setattr(owner, name, value)
        got = getattr(owner, name)
        self.assertIsInstance(got, result_type(member["type"]))
        if member["type"] == member["setType"]:
            self.assertEqual(got, value)
        return None

    def test_methods(self):
        for entry in CLASSES:
            # Items are appended before they are asked for, because that is the order of the declarations.
            owner = make(find(entry["name"]))
            for form in entry["methods"]:
                values = [sample(argument["type"]) for argument in form["arguments"]]
                with self.subTest(form["signature"]):
                    method = getattr(owner, form["name"])
                    self.assertIsInstance(method(*values), result_type(form["returns"]))
                    self.assertIn(form["description"], method.__doc__)

    def test_enumerations(self):
        for entry in ENUMERATIONS:
            members = [(member.name, member.value) for member in find(entry["name"])]
            self.assertEqual(members, [(member["name"], member["value"]) for member in entry["members"]])


if __name__ == "__main__":
    unittest.main()
