// The Phonex code of a word: words that sound alike have the same code.
//
// The algorithm is the one published in: A. J. Lait and B. Randell, "An Assessment of Name Matching
// Algorithms", Technical Report 550, Department of Computing Science, University of Newcastle upon
// Tyne, 1996. Its steps stand beside the code.
//
// A code is a letter and three digits. Text without a letter that is coded has the code "".
// Whatever is no letter of A to Z is passed over, and so is what comes after 200 characters.

var phonex = (function () {
  'use strict';

  var CODE_LENGTH = 4;
  var LONGEST_TEXT = 200;
  var PAIRS = { KN: 'N', WR: 'R', PH: 'F' };
  var FIRST_LETTERS = {
    E: 'A', I: 'A', O: 'A', U: 'A', Y: 'A', K: 'C', Q: 'C', P: 'B', J: 'G', V: 'F', Z: 'S'
  };
  var DIGITS = {
    B: '1', F: '1', P: '1', V: '1',
    C: '2', G: '2', J: '2', K: '2', Q: '2', S: '2', X: '2', Z: '2',
    D: '3', T: '3', L: '4', M: '5', N: '5', R: '6'
  };

  function isOneOf(letter, letters) {
    return letter !== '' && letters.indexOf(letter) >= 0;
  }

  function capitals(text) {
    var kept = [];
    for (var i = 0; i < text.length; i += 1) {
      var unit = text.charCodeAt(i);
      if (unit >= 97 && unit <= 122) unit -= 32;
      if (unit >= 65 && unit <= 90) kept.push(String.fromCharCode(unit));
    }
    return kept.join('');
  }

  // Step 1: S at the end goes. Step 2: pairs of letters at the beginning. Step 3: the first letter,
  // where a leading H goes.
  function prepared(word) {
    var end = word.length;
    while (end > 0 && word.charAt(end - 1) === 'S') end -= 1;
    word = word.substring(0, end);
    var pair = word.substring(0, 2);
    if (PAIRS.hasOwnProperty(pair)) word = PAIRS[pair] + word.substring(2);
    if (word.charAt(0) === 'H') word = word.substring(1);
    var first = word.charAt(0);
    if (FIRST_LETTERS.hasOwnProperty(first)) word = FIRST_LETTERS[first] + word.substring(1);
    return word;
  }

  // The digit of a letter, '' for none: D and T count unless C follows, L and R where a vowel
  // follows or the word ends.
  function digitOf(letter, next) {
    if (isOneOf(letter, 'DT') && next === 'C') return '';
    if (isOneOf(letter, 'LR') && next !== '' && !isOneOf(next, 'AEIOUY')) return '';
    return DIGITS.hasOwnProperty(letter) ? DIGITS[letter] : '';
  }

  // Step 4: digits for the letters after the first; none twice in a row. D or G after M or N is
  // silent. Step 5: cut, or filled up with zeros, to one length.
  return function (text) {
    var word = prepared(capitals(String(text).substring(0, LONGEST_TEXT)));
    var code = word.charAt(0);
    if (code === '') return '';
    for (var i = 1; i < word.length && code.length < CODE_LENGTH; i += 1) {
      var letter = word.charAt(i);
      var digit = digitOf(letter, word.charAt(i + 1));
      if (digit !== '' && digit !== code.charAt(code.length - 1)) code += digit;
      if (isOneOf(letter, 'MN') && isOneOf(word.charAt(i + 1), 'DG')) i += 1;
    }
    while (code.length < CODE_LENGTH) code += '0';
    return code;
  };
}());
