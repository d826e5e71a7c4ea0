// SPDX-License-Identifier: MIT
// Tests the editor grammars on the sample nodes, with the engine that editors use: each word must
// get the scope that fits its token in the compiler's keyword table, in a plain source and inside a
// node file.
'use strict';

const assert = require('assert');
const fs = require('fs');
const path = require('path');
const oniguruma = require('vscode-oniguruma');
const textmate = require('vscode-textmate');

const root = path.resolve(__dirname, '../..');
const extension = path.join(root, 'editors/vscode');
const read = (file) => fs.readFileSync(file, 'utf8');

// The scopes of the words, by their row in the compiler's table.
const scopes = {
  Type: 'storage.type',
  Function: 'support.function',
  Void: 'storage.type',
  Buffer: 'storage.modifier',
  Semantic: 'constant.language.semantic',
  Control: 'keyword.control',
  Directive: 'keyword.control.directive',
  Operator: 'keyword.operator',
  Special: 'keyword.control',
};

function readKeywords() {
  const keywords = new Map();
  const rows = /(Type|Semantic|Function|Word)\(\s*"([^"]+)",\s*TOKEN_\w+(?:,\s*WordClass::(\w+))?/g;
  for (const [, row, word, wordClass] of read(path.join(root, 'morl/parser/internal/keywords.h')).matchAll(rows)) {
    keywords.set(word, word === 'while' ? 'invalid.illegal' : scopes[wordClass || row]);
  }
  assert.strictEqual(keywords.size, 94);
  return keywords;
}

async function loadRegistry() {
  const wasm = fs.readFileSync(require.resolve('vscode-oniguruma/release/onig.wasm'));
  await oniguruma.loadWASM(wasm.buffer.slice(wasm.byteOffset, wasm.byteOffset + wasm.byteLength));
  const contributed = JSON.parse(read(path.join(extension, 'package.json'))).contributes.grammars;
  return new textmate.Registry({
    onigLib: Promise.resolve({
      createOnigScanner: (patterns) => new oniguruma.OnigScanner(patterns),
      createOnigString: (text) => new oniguruma.OnigString(text),
    }),
    loadGrammar: async (scopeName) => {
      const grammar = contributed.find((entry) => entry.scopeName === scopeName);
      assert(grammar, `no grammar for ${scopeName}`);
      const file = path.join(extension, grammar.path);
      return textmate.parseRawGrammar(read(file), file);
    },
  });
}

// [text, innermost scope, all scopes] of every token that is not blank.
function tokenize(grammar, source) {
  const tokens = [];
  let state = textmate.INITIAL;
  for (const line of source.split('\n')) {
    const result = grammar.tokenizeLine(line, state);
    for (const token of result.tokens) {
      const text = line.substring(token.startIndex, token.endIndex).trim();
      if (text !== '') {
        tokens.push([text, token.scopes[token.scopes.length - 1], token.scopes]);
      }
    }
    state = result.ruleStack;
  }
  return tokens;
}

function checkRows(grammar) {
  const rows = [
    ['in float3 p : TEXCOORD7;', 'in:storage.modifier float3:storage.type p:variable.other TEXCOORD7:constant.language'],
    ['#for LIGHTS : 0', '#for:keyword.control.directive LIGHTS:entity.name.macro 0:constant.numeric'],
    ['$n = $n + 1;', '$n:entity.name.macro =:keyword.operator $n:entity.name.macro +:keyword.operator 1:constant.numeric'],
    ['x = 2.; // float', 'x:variable.other =:keyword.operator 2.:constant.numeric //:punctuation.definition.comment float:comment.line'],
    ['/* in', '/*:comment.block in:comment.block'],
    ['floating = v.min;', 'floating:variable.other =:keyword.operator v:variable.other .:keyword.operator min:support.function'],
    ['c.length_ = texcube(a);', 'c:variable.other .:keyword.operator length_:variable.other.member =:keyword.operator texcube:variable.other'],
    ['float4x4transpose(m) float4x4tranpose(m)', 'float4x4transpose:variable.other m:variable.other float4x4tranpose:support.function m:variable.other'],
    ['while', 'while:invalid.illegal'],
  ];
  for (const [source, expected] of rows) {
    const got = tokenize(grammar, source)
      .flatMap(([text, scope]) => text.split(/\s+/).map((word) => [word, scope]));
    for (const pair of expected.split(' ')) {
      const colon = pair.lastIndexOf(':');
      const word = pair.substring(0, colon);
      assert(got.some(([text, scope]) => text === word && scope.startsWith(pair.substring(colon + 1))),
        `${source}: ${pair} is not in ${JSON.stringify(got)}`);
    }
  }
}

// Escapes in the string around a source: a quote in a comment, a tab after a word.
function checkEscapes(grammar) {
  const rows = [
    ['"content": "// say \\"hi\\" now\\nvoid main() {"', 'void', 'storage.type'],
    ['"content": "/* \\"hi\\" */\\nin float a;"', 'float', 'storage.type'],
    ['"content": "#for\\tN : 0\\nx = 1;"', 'N', 'entity.name.macro'],
    ['"content": "x = 1; // end", "name": "in"', 'name', 'support.type'],
  ];
  for (const [source, word, scope] of rows) {
    const tokens = tokenize(grammar, source);
    const found = tokens.find(([text]) => text.replace(/"/g, '') === word);
    assert(found && found[1].startsWith(scope), `${source}: ${word} is not ${scope}: ${JSON.stringify(tokens.map(([t, s]) => [t, s]))}`);
  }
}

// Every word of a source, whether or not it is a keyword.
function checkWords(tokens, keywords, where) {
  let checked = 0;
  for (const [text, scope] of tokens) {
    if (scope.startsWith('comment') || scope.startsWith('punctuation')) {
      continue;
    }
    const isWord = /^[#A-Za-z_$]/.test(text);
    const expected = keywords.get(text) || (text.startsWith('$') ? 'entity.name.macro' : null);
    if (expected) {
      assert(scope.startsWith(expected), `${where}: ${text} is ${scope}, not ${expected}`);
    } else if (isWord) {
      assert(/^(variable\.other|entity\.name)/.test(scope), `${where}: ${text} is ${scope}`);
    }
    checked += isWord ? 1 : 0;
  }
  return checked;
}

async function main() {
  const keywords = readKeywords();
  const registry = await loadRegistry();
  const plain = await registry.loadGrammar('source.morl');
  const nodeFiles = await registry.loadGrammar('source.morl-nodes');
  checkRows(plain);
  checkEscapes(nodeFiles);
  for (const [word, scope] of keywords) {
    if (!scope.startsWith('keyword.operator')) {
      const [[text, got]] = tokenize(plain, word);
      assert(text === word && got.startsWith(scope), `${word} is ${got}, not ${scope}`);
    }
  }
  let words = 0;
  const folder = path.join(root, 'examples/morl');
  for (const file of fs.readdirSync(folder).sort()) {
    const text = read(path.join(folder, file));
    const inFile = tokenize(nodeFiles, text)
      .filter(([, , scopes]) => scopes.includes('meta.embedded.morl'))
      .filter(([, scope]) => !scope.startsWith('constant.character.escape') && scope !== 'punctuation.definition.string.end.json');
    const inSource = [];
    for (const node of JSON.parse(text)) {
      const tokens = tokenize(plain, node.content);
      words += checkWords(tokens, keywords, `${file}, ${node.name}`);
      inSource.push(...tokens);
    }
    // Highlighting must be the same inside and outside of strings, except for comments, which are
    // split into tokens differently.
    const shape = (tokens) => tokens
      .filter(([, scope]) => !/comment|^source\.morl$|^meta\.embedded/.test(scope))
      .map(([word, scope]) => `${word} ${scope}`);
    assert.deepStrictEqual(shape(inFile), shape(inSource), file);
  }
  assert(words > 800, `only ${words} words were checked`);
  console.log(`checked ${words} words`);
}

main().catch((error) => {
  console.error(error.message);
  process.exit(1);
});
