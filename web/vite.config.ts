// SPDX-License-Identifier: MIT
import { defineConfig } from 'vitest/config';
import { wordsPlugin } from './words_plugin';

export default defineConfig({
  base: './',
  plugins: [wordsPlugin()],
  worker: { format: 'es' },
  build: { target: 'es2022', chunkSizeWarningLimit: 2000, assetsInlineLimit: 0 },
  server: { fs: { allow: ['..'] } },
  optimizeDeps: { exclude: ['morl'] },
  test: { include: ['test/**/*.test.ts'] },
});
