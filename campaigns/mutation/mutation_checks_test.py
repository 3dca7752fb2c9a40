"""Tests which mutations are found in a C++ file, and how reasons are matched with them.

Usage: python3 mutation_checks_test.py
"""

import argparse
import contextlib
import io
import textwrap
import unittest

from covering_tests import COVERING_TESTS, FOLDERS, in_order_of_promise, is_among
from mutation_campaign import REASONS, Campaign, all_mutations, chosen
from mutation_tree import CAUGHT, NOT_BUILT, SURVIVED, checkout_of
from mutations import mutations_of
from reasons import reasons_of


def mutated_lines(code, kind):
    """The lines that the mutations of a kind add to a function with this code."""
    text = "void f() {\n" + textwrap.indent(textwrap.dedent(code).strip(), "  ") + "\n}\n"
    return [" ".join(line[1:].strip() for line in mutation.diff() if line.startswith("+"))
            for mutation in mutations_of("src/store/F.cpp", text) if mutation.kind == kind]


class Comparisons(unittest.TestCase):
    def test_an_equality_becomes_an_inequality(self):
        self.assertEqual(mutated_lines("g(a == b);", "comparison"), ["g(a != b);"])

    def test_an_order_is_moved_by_its_limit_and_turned(self):
        self.assertEqual(mutated_lines("g(a < b);", "comparison"), ["g(a <= b);", "g(a > b);"])

    def test_the_brackets_of_a_template_are_no_comparison(self):
        self.assertEqual(mutated_lines("g(std::max<int>(a, b));", "comparison"), [])


class Constants(unittest.TestCase):
    def test_a_constant_is_moved_by_one_in_both_directions(self):
        self.assertEqual(mutated_lines("g(1'000);", "constant"), ["g(1001);", "g(999);"])

    def test_a_constant_keeps_its_suffix_and_its_point(self):
        self.assertEqual(mutated_lines("g(3U, 5.5);", "constant"),
                         ["g(2U, 5.5);", "g(4U, 5.5);", "g(3U, 4.5);", "g(3U, 6.5);"])

    def test_a_truth_is_turned(self):
        self.assertEqual(mutated_lines("return true;", "constant"), ["return false;"])

    def test_texts_comments_and_directives_have_no_constants(self):
        self.assertEqual(mutated_lines('g("1");  // 2\n#define X 3\ng(R"(4)");', "constant"), [])


class Statements(unittest.TestCase):
    def test_a_statement_is_dropped_and_a_declaration_is_not(self):
        self.assertEqual(mutated_lines("""
            const auto n = g();
            std::vector<int> all;
            QString *text = h();
            all.push_back(n);
            """, "statement"), [""])

    def test_the_statements_of_a_branch_a_loop_and_a_label_are_dropped(self):
        self.assertEqual(len(mutated_lines("""
            if (a) {
              return;
            }
            for (int i = 0; i < n; ++i) {
              emit changed(i);
            }
            switch (a) {
              case X::y:
                break;
            }
            """, "statement")), 3)

    def test_the_statement_around_a_lambda_and_those_in_it_are_dropped(self):
        self.assertEqual(mutated_lines("""
            run([&](int i) -> int {
              g(i);
            });
            """, "statement"), ["", ""])

    def test_the_list_of_a_loop_is_no_block(self):
        self.assertEqual(mutated_lines("""
            for (const int i : {1, 2}) {
              g(i);
            }
            """, "statement"), [""])


class Conditions(unittest.TestCase):
    def test_a_condition_is_negated_once(self):
        self.assertEqual(mutated_lines("if (a) {\n}", "condition"), ["if (!(a)) {"])
        self.assertEqual(mutated_lines("if (!a) {\n}", "condition"), ["if (a) {"])
        self.assertEqual(mutated_lines("if (a == b) {\n}", "condition"), [])

    def test_the_condition_of_a_choice_and_of_a_loop_is_negated(self):
        self.assertEqual(mutated_lines("return f(a).b() ? c : d;", "condition"),
                         ["return !(f(a).b()) ? c : d;"])
        self.assertEqual(mutated_lines("for (int i = 0; g(i); ++i) {\n}", "condition"),
                         ["for (int i = 0; !(g(i)); ++i) {"])

    def test_and_becomes_or(self):
        self.assertEqual(mutated_lines("g(a && b);", "condition"), ["g(a || b);"])

    def test_a_condition_that_declares_a_variable_stays(self):
        self.assertEqual(mutated_lines("if (const auto a = g()) {\n}", "condition"), [])


class Arguments(unittest.TestCase):
    def test_neighbouring_arguments_are_exchanged(self):
        self.assertEqual(mutated_lines("g(a, h<x, y>(b), c);", "arguments"),
                         ["g(h<x, y>(b), a, c);", "g(a, c, h<x, y>(b));"])

    def test_equal_arguments_stay(self):
        self.assertEqual(mutated_lines("g(a, a);", "arguments"), [])

    def test_the_arguments_of_a_sum_stay(self):
        self.assertEqual(mutated_lines("wrappingAdd(a, b);", "arguments"), [])

    def test_the_values_of_a_list_are_exchanged_and_its_names_stay(self):
        self.assertEqual(mutated_lines("return {.x = a, .y = b};", "arguments"),
                         ["return {.x = b, .y = a};"])

    def test_the_pairs_of_a_map_are_exchanged_only_in_themselves(self):
        self.assertEqual(mutated_lines("return {{a, 1}, {b, 2}};", "arguments"),
                         ["return {{1, a}, {b, 2}};", "return {{a, 1}, {2, b}};"])

    def test_parameters_and_enumerators_stay(self):
        text = "enum class E { a, b };\nvoid g(int a, int b);\n"
        self.assertEqual(mutations_of("src/store/G.h", text), [])

    def test_the_arguments_of_a_member_initialiser_are_exchanged(self):
        text = "G::G(int a, int b) : m_x(a, b) {}\n"
        self.assertEqual([mutation.replacement for mutation in mutations_of("src/store/G.cpp", text)],
                         ["b, a"])


class Reasons(unittest.TestCase):
    REASONS = textwrap.dedent("""
        # A comment.
        file: src/store/F.cpp
        -  g(1);
        +  g(2);
        because: g ignores
        because: its argument.
        """)

    def mutation(self, replacement):
        mutations = mutations_of("src/store/F.cpp", "void f() {\n\n    g(1);\n}\n")
        return next(mutation for mutation in mutations if mutation.replacement == replacement)

    def test_a_reason_explains_its_mutation_wherever_the_line_is(self):
        reason, = reasons_of(self.REASONS)
        self.assertEqual(reason.text, "g ignores its argument.")
        self.assertTrue(reason.explains(self.mutation("2")))
        self.assertFalse(reason.explains(self.mutation("0")))

    def test_a_reason_without_added_lines_explains_each_mutation_of_the_removed_ones(self):
        reason, = reasons_of(self.REASONS.replace("+  g(2);\n", ""))
        self.assertTrue(reason.explains(self.mutation("")))

    def test_an_entry_without_a_reason_is_refused(self):
        with self.assertRaises(ValueError):
            reasons_of(self.REASONS.replace("because", "since"))

    def test_each_reason_of_the_project_explains_a_mutation(self):
        mutations = all_mutations(checkout_of(__file__))
        for reason in reasons_of(REASONS.read_text(encoding="utf-8")):
            with self.subTest(reason):
                self.assertTrue(any(reason.explains(mutation) for mutation in mutations))


class Choice(unittest.TestCase):
    MUTATIONS = [mutation for folder in ("store", "sending") for mutation in mutations_of(
        f"src/{folder}/F.cpp", "void f() {\n" + "".join(f"  g({i});\n" for i in range(50)) + "}\n")]

    def chosen(self, mutations=None, **options):
        defaults = {"seed": 1, "count": None, "folder": None, "at": None}
        return chosen(mutations or self.MUTATIONS, argparse.Namespace(**{**defaults, **options}))

    def test_the_choice_of_a_folder_is_its_part_of_the_choice_of_all(self):
        everywhere = self.chosen(count=60)
        self.assertEqual(len(everywhere), 60)
        self.assertEqual(self.chosen(count=60, folder=["store"]),
                         [mutation for mutation in everywhere if mutation.folder == "store"])

    def test_a_seed_makes_the_same_choice_after_a_change_of_other_lines(self):
        moved = [mutation for path in ("src/store/F.cpp", "src/sending/F.cpp")
                 for mutation in mutations_of(path, "\n\n" + self.MUTATIONS[0].text)]
        self.assertEqual([mutation.diff() for mutation in self.chosen(count=60)],
                         [mutation.diff() for mutation in self.chosen(moved, count=60)])
        self.assertNotEqual(self.chosen(count=60), self.chosen(count=60, seed=2))

    def test_all_mutations_of_a_line_can_be_chosen(self):
        lines = {mutation.line for mutation in self.chosen(at=["src/store/F.cpp:3"], count=1)}
        self.assertEqual(lines, {3})


class Outcomes(unittest.TestCase):
    class Tree:
        """Each mutation has the next one of these outcomes."""

        def __init__(self, *outcomes):
            self._outcomes = iter(outcomes)
            self.restored = []

        def outcome(self, _mutation, _durations):
            return next(self._outcomes), None

        def restore(self, path, _text):
            self.restored.append(path)

    def test_survivors_are_shown_and_counted_apart_from_those_with_a_reason(self):
        mutations = mutations_of("src/store/F.cpp", "void f() {\n  g(1);\n  g(5);\n}\n")
        reasons = reasons_of("\nfile: src/store/F.cpp\n-  g(1);\nbecause: g ignores it.\n")
        tree = self.Tree(SURVIVED, CAUGHT, NOT_BUILT, CAUGHT, CAUGHT, SURVIVED)
        campaign = Campaign(mutations, reasons)
        with contextlib.redirect_stdout(io.StringIO()) as output:
            campaign.work(tree, {})
        self.assertIn("because: g ignores it.", output.getvalue())
        self.assertIn("src/store/F.cpp:3: constant", output.getvalue())
        self.assertEqual(campaign.survived(), 1)
        self.assertEqual(campaign.table().splitlines()[-2:],
                         ["| store | 5 | 3 (60.0 %) | 2 | 1 | 1 |",
                          "| all | 5 | 3 (60.0 %) | 2 | 1 | 1 |"])
        self.assertEqual(tree.restored, ["src/store/F.cpp"])


class CoveringTests(unittest.TestCase):
    def test_the_own_tests_of_a_folder_are_first(self):
        self.assertEqual([COVERING_TESTS[folder][0] for folder in FOLDERS], list(FOLDERS))

    def test_a_program_covers_with_all_its_classes(self):
        self.assertTrue(is_among("store.StoreLock", "store"))
        self.assertFalse(is_among("store_file.StoreLock", "store"))

    def test_the_tests_of_the_mutated_class_are_first_and_then_the_short_ones(self):
        durations = {"a.Slow": 3, "a.Quick": 1, "a.Mutated": 9}
        self.assertEqual(in_order_of_promise(durations, "src/a/Mutated.cpp", durations),
                         ["a.Mutated", "a.Quick", "a.Slow"])


if __name__ == "__main__":
    unittest.main()
