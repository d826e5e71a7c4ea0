// SPDX-License-Identifier: MIT
import reactHooks from 'eslint-plugin-react-hooks';
import tseslint from 'typescript-eslint';

export default tseslint.config(
  { ignores: ['dist', 'node_modules', '*.js', 'test/**/*.js'] },
  ...tseslint.configs.strictTypeChecked,
  { languageOptions: { parserOptions: { project: './tsconfig.json' } } },
  {
    plugins: { 'react-hooks': reactHooks },
    rules: {
      ...reactHooks.configs.recommended.rules,
      '@typescript-eslint/restrict-template-expressions': ['error', { allowNumber: true }],
    },
  },
);
