#pragma once

#include <string_view>

namespace cartonpick::orders {

/// The look of the pages for the screen. Where it is too narrow for a table, every row is a card.
inline constexpr std::string_view kScreenStyle = R"css(
:root {
  color-scheme: light dark;
  --window: #e9edf2; --surface: #fff; --shaded: #f1f4f8; --line: #c5ced9; --field-line: #7b8794;
  --text: #131c26; --muted: #46535f; --accent: #1550b8; --accent-text: #fff; --focus: #c96a00;
  --blue: #1550b8; --blue-ground: #dfe9fb; --green: #0b6430; --green-ground: #d8f1e0;
  --red: #a81e19; --red-ground: #fbe1de; --yellow: #6d4a00; --yellow-ground: #fff0c4;
}
@media (prefers-color-scheme: dark) {
  :root {
    --window: #0f161e; --surface: #1a232d; --shaded: #232e3a; --line: #45525f;
    --field-line: #7c8a98; --text: #eef3f8; --muted: #b3bfcb; --accent: #8ab8ff;
    --accent-text: #0c1a2e; --focus: #ffb454;
    --blue: #8ab8ff; --blue-ground: #22395c; --green: #86dfa6; --green-ground: #173a2a;
    --red: #ffa39b; --red-ground: #46211f; --yellow: #f2cf74; --yellow-ground: #403414;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0; background: var(--window); color: var(--text);
  font: 1rem/1.45 Inter, system-ui, sans-serif; overflow-wrap: anywhere;
}
.bar { background: #17222e; padding: .6rem max(1.25rem, (100% - 76rem) / 2 + 1.25rem);
  font-weight: 650; }
.bar a { color: #f4f7fa; text-decoration: none; }
.bar a:focus-visible { outline-color: #ffb454; }
main { max-width: 76rem; margin: 0 auto; padding: 1.25rem 1.25rem 3rem; }
h1 { font-size: 1.75rem; line-height: 1.2; margin: 0; }
h2 { font-size: 1.2rem; margin: 0; }
a { color: var(--accent); }
:focus-visible { outline: 3px solid var(--focus); outline-offset: 2px; border-radius: 4px; }
.head { display: flex; flex-wrap: wrap; align-items: end; gap: .75rem 1.5rem; margin: 0 0 1rem; }
.head h1 { flex: 1 1 auto; }
form { display: flex; flex-wrap: wrap; align-items: end; gap: .5rem; }
label { display: block; color: var(--muted); font-size: .875rem; margin-bottom: .35rem; }
input, button, .button {
  font: inherit; min-height: 2.75rem; padding: .4rem .9rem; border-radius: 8px;
  border: 1px solid var(--field-line); background: var(--surface); color: var(--text);
}
input { width: 17rem; max-width: 100%; display: block; }
button, .button {
  background: var(--accent); border-color: var(--accent); color: var(--accent-text);
  font-weight: 600; text-decoration: none; display: inline-flex; align-items: center;
  cursor: pointer;
}
.updated { color: var(--muted); font-size: .875rem; margin: 0 0 .4rem; text-align: right; }
.updated time, .figure, td time { font-variant-numeric: tabular-nums; }
.no-answer { display: none; color: var(--red); }
.stale .no-answer { display: inline; }
.card {
  background: var(--surface); border: 1px solid var(--line); border-radius: 10px;
  overflow: hidden; margin: 0 0 1.25rem;
}
table { width: 100%; border-collapse: collapse; }
caption { text-align: left; color: var(--muted); font-size: .875rem; padding: .7rem 1rem; }
th, td { padding: .6rem 1rem; text-align: left; vertical-align: baseline; }
thead th {
  background: var(--shaded); color: var(--muted); font-size: .875rem; font-weight: 600;
  border-block: 1px solid var(--line); white-space: nowrap;
}
tbody tr + tr > * { border-top: 1px solid var(--line); }
.figure { text-align: right; white-space: nowrap; }
tbody th { font-weight: 650; }
tbody th, td.text { white-space: pre-wrap; }
.state {
  display: inline-flex; gap: .4em; padding: .1rem .65rem; border-radius: 1em; font-weight: 600;
  white-space: nowrap;
}
.blue { color: var(--blue); background: var(--blue-ground); }
.green { color: var(--green); background: var(--green-ground); }
.red { color: var(--red); background: var(--red-ground); }
.yellow { color: var(--yellow); background: var(--yellow-ground); }
.grey { color: var(--muted); background: var(--shaded); }
.less { color: var(--red); font-weight: 650; }
.more { color: var(--yellow); font-weight: 650; }
.note { display: block; color: var(--muted); font-size: .875rem; white-space: normal; }
.box-head { display: flex; flex-wrap: wrap; gap: .2rem 1rem; align-items: baseline;
  padding: .8rem 1rem; }
.box-head p { margin: 0; color: var(--muted); }
dl { display: flex; flex-wrap: wrap; gap: .75rem 2.5rem; margin: 0; padding: 1rem; }
dt { color: var(--muted); font-size: .875rem; }
dd { margin: 0; white-space: pre-wrap; }
dd.figure { font-size: 1.5rem; font-weight: 650; line-height: 1.2; text-align: left; }
dl + dl { border-top: 1px solid var(--line); }
.lines table { table-layout: fixed; }
.lines thead th { width: 7.5rem; }
.lines thead th:nth-child(-n+2) { width: 10rem; }
.lines thead th.wide { width: auto; }
.login { max-width: 30rem; padding-top: 10vh; }
.login form { margin-top: 1.25rem; }
.login form div { flex: 1 1 100%; }
.login input { width: 100%; }
.login button { margin-top: .5rem; }
.wrong { flex: 1 1 100%; margin: 0; color: var(--red); font-weight: 600; }
.none { padding: 2rem 1rem; margin: 0; text-align: center; color: var(--muted); }
.visually-hidden {
  position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%);
  white-space: nowrap;
}
@media (max-width: 46rem) {
  main { padding: 1rem .75rem 2rem; }
  .bar { padding-inline: .75rem; }
  form, form div, input { width: 100%; }
  form div { flex: 1 1 8rem; width: auto; }
  .updated { text-align: left; }
  thead { position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%); }
  table, tbody, caption { display: block; }
  tbody tr { display: flex; flex-wrap: wrap; gap: .15rem 1.25rem; padding: .75rem 1rem; }
  tbody tr + tr { border-top: 1px solid var(--line); }
  tbody tr > *, tbody tr + tr > * { display: block; padding: 0; border: 0; }
  tbody tr > * { order: 1; }
  tbody tr > .wide { flex: 1 1 100%; }
  tbody tr > th { order: 0; flex: 1 1 auto; }
  tbody tr > .state-cell { order: 0; }
  tbody tr > td:empty { display: none; }
  [data-label]::before { content: attr(data-label) " "; color: var(--muted); font-weight: 400; }
}
)css";

/// The look of the sheets. A module is the width of a barcode's narrowest bar: on paper four dots
/// of 300 dpi, on a screen two pixels.
inline constexpr std::string_view kSheetStyle = R"css(
@page { size: A4; margin: 12mm 12mm 16mm;
  @bottom-right { content: counter(page) " / " counter(pages); font: 9pt sans-serif; } }
:root { --module: .34mm; color-scheme: light; }
* { box-sizing: border-box; }
body { margin: 0; background: #fff; color: #000; font: 11pt/1.35 Inter, system-ui, sans-serif;
  overflow-wrap: anywhere; }
h1 { font-size: 20pt; line-height: 1.15; margin: 0; }
h2 { font-size: 14pt; margin: 0; }
header, .box-head, li { display: flex; flex-wrap: wrap; gap: 2mm 8mm; align-items: center;
  justify-content: space-between; }
header { padding-bottom: 4mm; align-items: start; }
.what { flex: 1 1 60mm; min-width: 0; }
dl { margin: 2mm 0 0; }
dl div { display: grid; grid-template-columns: 22mm 1fr; }
dd { margin: 0; }
.code { margin: 0; max-width: 100%; text-align: center; }
.code figcaption { font: 10pt/1.2 ui-monospace, monospace; letter-spacing: .06em;
  margin-top: .6mm; white-space: pre-wrap; }
.barcode { display: block; margin: 0 auto; height: 12mm; max-width: 100%;
  width: calc(var(--modules) * var(--module)); }
header .barcode { height: 16mm; }
section { border-top: 1.5pt solid #000; padding: 3mm 0 4mm; break-inside: avoid; }
.box-head { break-after: avoid; }
ul { list-style: none; margin: 2mm 0 0; padding: 0; }
li { border-top: .5pt solid #777; padding: 2.5mm 0; break-inside: avoid; }
.pieces { flex: 0 0 16mm; font-size: 16pt; font-weight: 700; text-align: right;
  white-space: nowrap; }
.what b { font-size: 12pt; }
.what span { display: block; }
.what b, .what span, dd { white-space: pre-wrap; }
nav { padding: 0 0 5mm; }
a { color: #1550b8; }
:focus-visible { outline: 3px solid #c96a00; outline-offset: 2px; }
@media screen {
  :root { --module: 2px; }
  body { max-width: 200mm; margin: 0 auto; padding: 6mm 4mm; }
}
@media print { nav { display: none; } }
)css";

}  // namespace cartonpick::orders
