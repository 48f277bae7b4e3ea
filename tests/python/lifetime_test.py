"""Python and the library share the life of every object, and an object has one Python object at a time."""

import enum
import gc
import random
import unittest
import weakref

from quillon import _core, chart
from quillon.chart import ColumnChart, DataPoint, DataSeries, DataSet, Title

OPERATIONS = 10_000
HELD = 60


class Lifetime(unittest.TestCase):
    def setUp(self):
        gc.collect()
        self.assertEqual(_core.bound_objects(), 0)

    tearDown = setUp

    def test_reading_twice_gives_the_same_object(self):
        owner, data, series = ColumnChart(), DataSet(), DataSeries()
        owner.DataSet = data
        self.assertIs(owner.DataSet, data)
        self.assertIs(data.appendSeries(series), series)
        self.assertIs(data.getSeries(1), series)
        point = series.appendPoint(1.0)
        self.assertIs(series.getPoint(1), point)
        self.assertIsNot(series.appendPoint(1.0), point)

    def test_neither_children_nor_parents_need_the_other_in_python(self):
        owner = ColumnChart()
        owner.ChartTitle = Title("Revenue")
        gc.collect()
        self.assertEqual(_core.bound_objects(), 1)
        run = owner.ChartTitle.Text[0]
        del owner
        self.assertEqual(run.Content, "Revenue")

    def test_weak_references_end_with_the_python_object(self):
        owner = ColumnChart()
        owner.DataSet = DataSet(["Q1"])
        found = []
        data = owner.DataSet
        # The callback asks for the object that is going, and is given another one.
        reference = weakref.ref(data, lambda _: found.append(owner.DataSet.Categories))
        self.assertIs(reference(), owner.DataSet)
        del data
        self.assertIsNone(reference())
        self.assertEqual(found, [["Q1"]])

    def test_subclasses_in_python(self):
        class Sales(ColumnChart):
            def __del__(self):
                deleted.append(self.ChartTitle)

        deleted = []
        sales = Sales()
        sales.ChartTitle = title = Title("Sales")
        sales.itself = sales
        del sales
        gc.collect()
        self.assertEqual(deleted, [title])

    def test_random_operations(self):
        walk = RandomWalk(seed=5)
        for _ in range(OPERATIONS):
            walk.step()
            if walk.random.random() < 0.005:
                gc.collect()
        self.assertGreater(walk.done, OPERATIONS // 2)
        self.assertGreater(walk.refused, 0)


class Subclasses(unittest.TestCase):
    def test_take_arguments_of_their_own(self):
        class Region(DataSet):
            def __init__(self, name, start=True):
                if start:
                    super().__init__([name])
                self.name = name

        self.assertEqual((Region("North").name, Region("North").Categories), ("North", ["North"]))
        half = Region("North", start=False)
        self.assertEqual(repr(half), "<Region>")
        for use in (lambda: half.Categories, lambda: len(half), lambda: setattr(ColumnChart(), "DataSet", half)):
            self.assertRaisesRegex(TypeError, r"must call super\(\).__init__\(\)", use)
        self.assertRaisesRegex(TypeError, "initialised already", Region("North").__init__, "South")


class RandomWalk:
    """Uses members at random on objects that it holds until others take their place."""

    def __init__(self, seed):
        self.random = random.Random(seed)
        self.classes = [cls for cls in vars(chart).values() if isinstance(cls, type) and issubclass(cls, _core.Handle)]
        self.held = [ColumnChart()] * HELD
        self.done = self.refused = 0

    def step(self):
        try:
            value = self.random.choice([self.make, self.use, self.use, self.use])()
            self.done += 1
        except (TypeError, ValueError, IndexError, AttributeError):
            self.refused += 1
            return
        for item in value if isinstance(value, list) else [value]:
            if isinstance(item, _core.Handle):
                self.held[self.random.randrange(HELD)] = item

    def make(self):
        cls = self.random.choice(self.classes)
        forms = _core.constructors(cls)
        return cls(*self.arguments(self.random.choice(forms))) if forms else cls()

    def use(self):
        target = self.random.choice(self.held)
        members = [member for base in type(target).__mro__ for member in vars(base).values()]
        member = self.random.choice([member for member in members if type(member) in (_core.Property, _core.Method)])
        if type(member) is _core.Method:
            return member(target, *self.arguments(self.random.choice(member.forms)))
        if self.random.random() < 0.5:
            return getattr(target, member.__name__)
        return setattr(target, member.__name__, self.value(member.set_type_name or "Any"))

    def arguments(self, form):
        return [self.value(type_name) for _, type_name in form[0]]

    def value(self, type_name):
        """Mostly of the type."""
        if self.random.random() < 0.1:
            return self.random.choice([None, "", [], 0, -1, 2.5, "\ud800", object(), DataPoint(), [1, 2]])
        if type_name in VALUES:
            return self.random.choice(VALUES[type_name])
        cls = getattr(chart, type_name)
        if issubclass(cls, enum.Enum):
            return self.random.choice(list(cls))
        fitting = [value for value in self.held if isinstance(value, cls)]
        return self.random.choice(fitting) if fitting else cls()


VALUES = {
    "float": [0.0, 1.5, -2, float("nan")],
    "int": [0, 1, 2, 100, 360],
    "bool": [True, False],
    "str": ["", "red", "rgb(1,2,3)", "\u00e9\U0001f389", "2in"],
    "Sequence[str]": [[], ["Q1", "Q2"], ("a",)],
    "Any": ["blue", (1, 0.5, 0), [1]],
}
