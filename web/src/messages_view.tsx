// SPDX-License-Identifier: MIT
import { targets, type Message } from './compiler/protocol';
import { findNode } from './model/project';
import { projectOf } from './model/store';
import { useAllMessages, usePage, usePageStore } from './model/use_store';

function about(message: Message): string {
  const isAll = message.targets.length === targets.length || message.targets.length === 0;
  return isAll ? '' : message.targets.join(', ');
}

function MessageLine({
  message,
  shaders = [],
}: {
  message: Message;
  /** Those that are not chosen and have it. */
  shaders?: readonly string[];
}) {
  const store = usePageStore();
  const place =
    message.node === '' ? '' : `${message.node}${message.line > 0 ? `:${message.line}` : ''}`;
  const go = (): void => {
    store.setState((state) => {
      const node = findNode(projectOf(state), message.node);
      const { line, column } = message;
      return node ? { selected: node.id, goTo: { node: node.name, line, column } } : {};
    });
  };
  return (
    <li className={message.severity}>
      <button onClick={go} disabled={place === ''}>
        <span className="severity">{message.severity}</span>
        {place !== '' && <span className="place">{place}</span>}
        <span className="text">{message.text}</span>
        {message.hint !== '' && <span className="hint">{message.hint}</span>}
        {message.check !== '' && <span className="muted">[{message.check}]</span>}
        <span className="muted">{about(message)}</span>
        {shaders.length > 0 && <span className="muted">in {shaders.join(', ')}</span>}
      </button>
    </li>
  );
}

/** Everything that is wrong; a line leads to its place. */
export function MessagesView() {
  const answer = usePage((state) => state.answer);
  const { own, others, remarks } = useAllMessages();
  const messages = [...own, ...remarks];
  const failure = answer?.failure ?? '';
  return (
    <section className="panel messages" aria-label="Messages">
      <div className="bar" role="status">
        {failure !== '' ? (
          <strong className="error">{failure}</strong>
        ) : (
          headline(messages, others.length)
        )}
      </div>
      <ul tabIndex={messages.length + others.length > 0 ? 0 : -1} aria-label="List of messages">
        {messages.map((message, i) => (
          <MessageLine key={i} message={message} />
        ))}
        {others.map((message, i) => (
          <MessageLine key={`other ${i}`} message={message} shaders={message.shaders} />
        ))}
      </ul>
    </section>
  );
}

/** @param inOthers how many more there are in shaders that are not chosen */
function headline(messages: readonly Message[], inOthers: number): string {
  const errors = messages.filter((message) => message.severity === 'error').length;
  const warnings = messages.length - errors;
  const count = (number: number, word: string): string =>
    `${number} ${word}${number === 1 ? '' : 's'}`;
  const rest = inOthers === 0 ? '' : `, and ${count(inOthers, 'message')} in other shaders`;
  return messages.length === 0
    ? `No faults, no warnings${rest}`
    : `${count(errors, 'error')}, ${count(warnings, 'warning')}${rest}`;
}
