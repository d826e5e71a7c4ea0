#version 100
precision highp int; 
precision highp float; 
uniform vec4 surfaceColor;
varying vec4 oVertexColor;
varying vec3 oWorldPos;
varying vec3 oNormal;
void main(){ 
	vec4 ioVertexColor = oVertexColor;
	vec3 ioWorldPos = oWorldPos;
	vec3 ioNormal = oNormal;
	vec4 retoColor = vec4(1.0);
	vec4 albedo = surfaceColor;
	albedo *= ioVertexColor;
	vec3 lit = albedo.xyz;
	retoColor = vec4(lit,albedo.w);
	gl_FragColor = retoColor; 
}
