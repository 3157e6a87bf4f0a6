// All walks in one browser: starting one takes longer than most of them.
import "./sale.test.mjs";
import "./records.test.mjs";
import "./keyboard.test.mjs";
import "./administration.test.mjs";
import "./texts.test.mjs";
import "./visibility.test.mjs";
import "./pages.test.mjs";
