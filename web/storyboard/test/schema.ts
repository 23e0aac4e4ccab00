// The models named on the command line against the schema.
import { readFileSync } from 'node:fs';
import Ajv2020 from 'ajv/dist/2020';

const schema: unknown = JSON.parse(readFileSync('model.schema.json', 'utf8'));
const check = new Ajv2020({ strict: false }).compile(schema as object);
for (const file of process.argv.slice(2)) {
  if (!check(JSON.parse(readFileSync(file, 'utf8')))) {
    console.error(file, check.errors);
    process.exitCode = 1;
  }
}
