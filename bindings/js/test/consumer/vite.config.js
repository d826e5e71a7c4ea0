// SPDX-License-Identifier: MIT
export default { base: "./", worker: { format: "es" } };
