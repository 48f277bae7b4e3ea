"""What is installed, and how other projects use it."""

import concurrent.futures
import os
import pathlib
import subprocess
import tempfile
import unittest
import zipfile

SOURCE = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["QUILLON_BUILD"])
CXX = os.environ["CXX"]
PROGRAM = SOURCE / "examples" / "first_chart.cpp"


def run(*command, **options):
    """The output of a command; its own words if it fails."""
    done = subprocess.run(
        [str(part) for part in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options
    )
    if done.returncode:
        raise AssertionError(f"{command} failed:\n{done.stdout}")
    return done.stdout


class Scratch(unittest.TestCase):
    """Tests in a scratch folder of their own."""

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.scratch = pathlib.Path(folder.name)

    def build_consumer(self, target, *definitions):
        """Builds a program of the other project, and returns its path."""
        build = self.scratch / "consumer"
        run("cmake", "-S", SOURCE / "tests/install/consumer", "-B", build, f"-DDOCUMENT_PROGRAM={PROGRAM}", *definitions)
        run("cmake", "--build", build, "--target", target, "-j2")
        return build / target

    def check_names(self, program):
        self.assertEqual(run(program), "quillon.chart.PieChart 1\n")

    def check_document(self, program, **environment):
        document = self.scratch / "made.docx"
        document.unlink(missing_ok=True)
        run(program, document, env={**os.environ, **environment})
        self.assertIn("word/document.xml", zipfile.ZipFile(document).namelist())


class InstalledTree(Scratch):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.prefix = cls.scratch / "prefix"
        run("cmake", "--install", BUILD, "--prefix", cls.prefix)
        cls.include = cls.prefix / "include" / "quillon"
        cls.libraries = next(cls.prefix.rglob("liborca.*")).parent
        cls.is_shared = bool(list(cls.libraries.glob("liborca.so*")))

    def headers(self):
        return sorted(path.relative_to(self.include) for path in self.include.rglob("*"))

    def test_has_the_public_headers_where_the_source_tree_has_them(self):
        headers = {str(header) for header in self.headers() if header.suffix == ".h"}
        for header in headers:
            self.assertEqual((self.include / header).read_text(), (SOURCE / header).read_text())
        for header in ("chart/model/PieChart.h", "chart/writer/DOCXChartWriter.h", "chart/host/ModuleEntry.h",
                       "orca/Script.h", "report/document/Document.h", "report/fill/Template.h", "support/FeatureService.h"):
            self.assertIn(header, headers)
        for part in ("Templates", "MarkupTemplate", "DomElements", "WriterColors", "ErrorHandler", "Classes", "Xml",
                     "Namespace"):
            self.assertFalse([header for header in headers if part in pathlib.Path(header).name], part)

    def test_has_headers_that_compile_alone(self):
        def compile_alone(header):
            run(CXX, "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-I", self.include,
                "-include", self.include / header, "-x", "c++", "/dev/null")

        headers = [header for header in self.headers() if header.suffix == ".h"]
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            list(pool.map(compile_alone, headers))

    def test_has_licence_and_notices(self):
        self.assertEqual({path.name for path in (self.prefix / "share" / "doc").rglob("*") if path.is_file()},
                         {"LICENSE", "NOTICE"})

    def test_has_the_pages_of_the_command(self):
        for page, text in [("man/man1/quillon-report.1", ".TH QUILLON"),
                           ("bash-completion/completions/quillon-report", "complete -o filenames"),
                           ("zsh/site-functions/_quillon-report", "#compdef quillon-report")]:
            self.assertIn(text, (self.prefix / "share" / page).read_text())

    def test_has_versioned_libraries(self):
        if not self.is_shared:
            self.skipTest("the libraries are static")
        for name in ("orca", "quillon_charts", "quillon_report"):
            dynamic = run(os.environ["READELF"], "-d", self.libraries / f"lib{name}.so")
            self.assertIn(f"Library soname: [lib{name}.so.0.1]", dynamic)
            self.assertTrue((self.libraries / f"lib{name}.so.0.1.0").is_file())

    def test_is_found_by_cmake(self):
        where = f"-DCMAKE_PREFIX_PATH={self.prefix}"
        self.check_names(self.build_consumer("by_names", where))
        self.check_document(self.build_consumer("document", where))

    def test_is_found_by_pkg_config(self):
        environment = {**os.environ, "PKG_CONFIG_PATH": str(self.libraries / "pkgconfig")}
        flags = run("pkg-config", "--cflags", "--libs", "quillon", env=environment).split()
        program = self.scratch / "program"
        run(CXX, "-std=c++20", PROGRAM, "-o", program, *flags)
        self.check_document(program, LD_LIBRARY_PATH=str(self.libraries))


class Subproject(Scratch):
    def test_needs_only_what_is_used(self):
        unused = ("Python", "pybind11", "CLI11", "nlohmann_json", "GTest", "fmt", "benchmark")
        program = self.build_consumer(
            "by_names", f"-DQUILLON_SOURCE={SOURCE}", "-DCMAKE_UNITY_BUILD=ON",
            *(f"-DCMAKE_DISABLE_FIND_PACKAGE_{name}=ON" for name in unused))
        self.check_names(program)
        # The other project installs its own things alone.
        prefix = self.scratch / "prefix"
        run("cmake", "--install", self.scratch / "consumer", "--prefix", prefix)
        self.assertFalse([path for path in prefix.rglob("*") if path.is_file()])


class Hardening(unittest.TestCase):
    """Reads from the binaries of a release build how they were built."""

    def setUp(self):
        if os.environ["CONFIGURATION"] != "Release":
            self.skipTest("only release builds are hardened")

    def binaries(self):
        yield BUILD / "bin" / "quillon-report"
        yield from (BUILD / "lib").glob("lib*.so")
        yield from (BUILD / "python" / "quillon").glob("_core*.so")

    def read(self, binary, *options):
        return run(os.environ["READELF"], "-W", *options, binary)

    def test_loads_anywhere_and_seals_what_the_linker_filled_in(self):
        for binary in self.binaries():
            self.assertIn("DYN (", self.read(binary, "-h"), binary)
            self.assertIn("GNU_RELRO", self.read(binary, "-l"), binary)
            self.assertRegex(self.read(binary, "-d"), r"FLAGS.*\bNOW\b", binary)
        self.assertRegex(self.read(BUILD / "bin" / "quillon-report", "-d"), r"FLAGS.*\bPIE\b")

    def test_guards_stacks_and_checks_copies(self):
        imports = {binary: self.read(binary, "--dyn-syms") for binary in self.binaries()}
        for binary, symbols in imports.items():
            self.assertIn("__stack_chk_fail", symbols, binary)
        self.assertTrue(any("_chk@" in symbols.replace("__stack_chk_fail@", "") for symbols in imports.values()))


if __name__ == "__main__":
    unittest.main()
