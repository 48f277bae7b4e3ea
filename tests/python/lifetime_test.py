"""Python and the library share the life of every object, and an object has one Python object at a time."""

import enum
import gc
import random
import unittest
import weakref

from quillon import _core, chart
from quillon.chart import ColumnChart, DataPoint, DataSeries, DataSet, Text, Title

OPERATIONS = 10_000
HELD = 60


class Lifetime(unittest.TestCase):
    def setUp(self):
        gc.collect()
        self.assertEqual(_core.bound_objects(), 0)

    def tearDown(self):
        gc.collect()
        self.assertEqual(_core.bound_objects(), 0)

    def test_reading_twice_gives_the_same_object(self):
        owner, data = ColumnChart(), DataSet()
        owner.DataSet = data
        self.assertIs(owner.DataSet, data)
        series = DataSeries()
        self.assertIs(data.appendSeries(series), series)
        self.assertIs(data.getSeries(1), series)
        point = series.appendPoint(1.0)
        self.assertIs(series.getPoint(1), point)
        self.assertEqual({point: "found"}[series[0]], "found")
        self.assertIsNot(series.appendPoint(1.0), point)

    def test_the_library_keeps_what_python_drops(self):
        series = DataSet().appendSeries(DataSeries("North"))
        point = series.appendPoint(2.5)
        del series
        self.assertEqual(point.Value, 2.5)
        owner = ColumnChart()
        owner.ChartTitle = Title("Revenue")
        gc.collect()
        self.assertEqual(_core.bound_objects(), 2)
        self.assertEqual(owner.ChartTitle.Text[0].Content, "Revenue")

    def test_children_outlive_their_parents(self):
        run = Title("Revenue").Text.Content[0]
        self.assertEqual(run.Content, "Revenue")
        fill = chart.ShapeFormat().Fill
        fill.Color = "red"
        self.assertEqual(fill.Color.Color, "red")

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
        sales.note = "own attribute"
        sales.ChartTitle = title = Title("Sales")
        sales.itself = sales
        del sales
        gc.collect()
        self.assertEqual(deleted, [title])

    def test_a_refused_constructor_leaves_nothing(self):
        for call in (lambda: DataSet([1]), lambda: chart.PieChartDataSeriesFormatOptions(400), lambda: Text(1)):
            self.assertRaises((TypeError, ValueError), call)

    def test_random_operations(self):
        walk = RandomWalk(seed=5)
        for _ in range(OPERATIONS):
            walk.step()
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
    """Uses members at random on objects that it holds for a while."""

    def __init__(self, seed):
        self.random = random.Random(seed)
        self.classes = [cls for name in chart.__all__ if is_class(cls := getattr(chart, name))]
        self.held = []
        self.done = self.refused = 0

    def step(self):
        actions = [self.make, self.use, self.use, self.use, self.drop]
        try:
            self.random.choice(actions)()
            self.done += 1
        except (TypeError, ValueError, IndexError, AttributeError):
            self.refused += 1

    def make(self):
        cls = self.random.choice(self.classes)
        forms = _core.constructors(cls)
        self.hold(cls(*self.arguments(self.random.choice(forms))) if forms else cls())

    def use(self):
        if not self.held:
            return
        target = self.random.choice(self.held)
        members = [member for base in type(target).__mro__ for member in vars(base).values()]
        member = self.random.choice([member for member in members if type(member) in (_core.Property, _core.Method)])
        if type(member) is _core.Method:
            self.hold(member(target, *self.arguments(self.random.choice(member.forms))))
        elif self.random.random() < 0.5:
            self.hold(getattr(target, member.__name__))
        else:
            setattr(target, member.__name__, self.value(member.set_type_name or "Any"))

    def drop(self):
        if self.held:
            self.held.pop(self.random.randrange(len(self.held)))
        if self.random.random() < 0.02:
            gc.collect()

    def hold(self, value):
        values = value if isinstance(value, list) else [value]
        self.held += [value for value in values if isinstance(value, _core.Handle)]
        while len(self.held) > HELD:
            self.drop()

    def arguments(self, form):
        return [self.value(type_name) for _, type_name in form[0]]

    def value(self, type_name):
        """Mostly of the type."""
        if self.random.random() < 0.1:
            return self.random.choice([None, "", [], 0, -1, 2.5, "\ud800", object(), DataPoint(), [1, 2]])
        cls = getattr(chart, type_name, None)
        if cls is None:
            return self.random.choice(VALUES[type_name])
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


def is_class(value):
    return isinstance(value, type) and issubclass(value, _core.Handle)


if __name__ == "__main__":
    unittest.main()
