// SPDX-License-Identifier: Apache-2.0
import { render } from 'preact';
import './app.css';
import { App } from './App';
import { start } from './store';

start();
render(<App />, document.getElementById('app')!);
