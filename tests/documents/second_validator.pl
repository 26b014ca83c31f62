#!/usr/bin/env perl
# Validates documents against a schema with JSON::Validator. Prints a line for each: "valid", or what is wrong with it.
# Uses the class for draft 2019-09, in which everything that our schemas use means the same.
#
# Usage: second_validator.pl SCHEMA DOCUMENTS, a file with a JSON array of documents
use strict;
use warnings;

use JSON::Validator::Schema::Draft201909;
use Mojo::File qw(path);
use Mojo::JSON qw(decode_json);

my ($schema_file, $documents_file) = @ARGV;
my $schema = JSON::Validator::Schema::Draft201909->new(decode_json(path($schema_file)->slurp));
for my $document (@{decode_json(path($documents_file)->slurp)}) {
    my @errors = $schema->validate($document);
    print @errors ? "$errors[0]\n" : "valid\n";
}
