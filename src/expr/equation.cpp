// clsEquation: parser and evaluator (being written).
