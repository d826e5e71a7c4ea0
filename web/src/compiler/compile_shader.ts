// SPDX-License-Identifier: MIT
import {
  type Compiler,
  MorlError,
  type Request,
  type Result,
  type Target,
  type Warning,
} from 'morl';
import { type Answer, type Job, type Message, targets, type Texts } from './protocol';

type Shared = Omit<Request, 'stage' | 'nodes'>;

/** Collects messages; those that differ by their target only become one. */
class Messages {
  private readonly byText = new Map<string, Message>();

  add(target: Target, message: Omit<Message, 'targets'>): void {
    const key = [message.node, message.line, message.column, message.text].join('\0');
    const known = this.byText.get(key);
    const others = known?.targets.filter((other) => other !== target) ?? [];
    this.byText.set(key, { ...message, targets: [...others, target] });
  }

  list(): Message[] {
    return [...this.byText.values()];
  }
}

/** Whether a warning is about a macro that is left out on purpose. */
function isWanted(warning: Warning, optionalMacros: readonly string[]): boolean {
  return !(
    warning.check === 'unset-macro' &&
    optionalMacros.some((name) => warning.text.includes(`'${name}'`))
  );
}

function compilePass(
  compiler: Compiler,
  request: Request,
  optionalMacros: readonly string[],
  messages: Messages,
): Result | null {
  if (request.nodes.length === 0) {
    return null;
  }
  try {
    const result = compiler.compile(request);
    for (const fault of result.faults) {
      messages.add(request.target, { ...fault, severity: 'error', check: '' });
    }
    for (const warning of result.warnings.filter((one) => isWanted(one, optionalMacros))) {
      const { isRefused, ...rest } = warning;
      const severity = isRefused ? 'error' : 'warning';
      messages.add(request.target, { ...rest, severity, hint: '' });
    }
    return result;
  } catch (error) {
    if (!(error instanceof MorlError) || error.kind !== 'request-refused') {
      throw error;
    }
    for (const fault of error.faults) {
      messages.add(request.target, { ...fault, severity: 'error', check: '' });
    }
    return null;
  }
}

/** Brings a compiler up to date and compiles a shader for all targets. */
export function compileShader(compiler: Compiler, job: Job): Answer {
  job.removed.forEach((name) => compiler.removeNode(name));
  job.changed.forEach((node) => {
    compiler.setNode({ ...node, references: [...node.references] });
  });
  const messages = new Messages();
  const start = performance.now();
  const texts = Object.fromEntries(
    targets.map((target) => {
      const macros = { ...job.macros, ...job.targetMacros[target] };
      const { samplers } = job;
      const shared: Shared = { target, macros, samplers, warnings: true };
      const run = (request: Request): Result | null =>
        compilePass(compiler, request, job.optionalMacros, messages);
      const vertex = run({ ...shared, stage: 'vertex', nodes: job.vertex });
      const semantics = vertex?.semantics ?? {};
      const fragment = run({ ...shared, stage: 'fragment', nodes: job.fragment, semantics });
      return [target, { vertex, fragment }];
    }),
  ) as unknown as Texts;
  const microseconds = Math.round((performance.now() - start) * 1000);
  return { id: job.id, texts, messages: messages.list(), microseconds, failure: '' };
}
