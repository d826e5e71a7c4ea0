// SPDX-License-Identifier: MIT
import { type StreamParser, StreamLanguage } from '@codemirror/language';

const types =
  /^(?:void|bool|int[234]?|float(?:[234](?:x[234])?)?|[bi]?vec[234]|mat[234](?:x[234])?|sampler\w*|Texture\w+|SamplerState|struct|cbuffer)\b/;
const keywords =
  /^(?:if|else|for|while|return|discard|in|out|uniform|attribute|varying|precision|highp|mediump|lowp|layout|register|static|const)\b/;

/** Enough of HLSL and GLSL to read what the compiler writes. */
const parser: StreamParser<null> = {
  name: 'shader',
  startState: () => null,
  token(stream) {
    if (stream.eatSpace()) return null;
    if (stream.match(/^\/\/.*|^\/\*.*?\*\//)) return 'comment';
    if (stream.match(/^#.*/)) return 'processingInstruction';
    if (stream.match(types)) return 'typeName';
    if (stream.match(keywords)) return 'keyword';
    if (stream.match(/^(?:SV_\w+|[A-Z]+\d*)\b/)) return 'annotation';
    if (stream.match(/^\d+\.?\d*/)) return 'number';
    if (stream.match(/^\w+(?=\s*\()/)) return 'variableName.function';
    if (stream.match(/^\w+/)) return 'variableName';
    stream.next();
    return null;
  },
};

export const shaderLanguage = StreamLanguage.define(parser);
